// Polling the line against the clock.
#include "link/line_waits.h"

#include <cmath>

#include "platform/line_ends.h"

namespace ox {
namespace {

constexpr float kInputWaitSeconds = 1.0F;
/// Between an "R" and what belongs to the same line: a character takes 4.2 ms at 2400 baud, and adapters hand
/// on what they have every 16 ms.
constexpr float kLineGoesOnSeconds = 0.05F;
constexpr int kWakeUpTries = 3;
constexpr BytesView kWakeUp = "S";
constexpr BytesView kRefused = "N";
constexpr BytesView kEnded = "R";

}  // namespace

bool LineWaits::GoesOn(float start, float length, int seconds) const {
  const float now = host_.clock.SecondsSinceMidnight();
  return now < start + length || now < static_cast<float>(seconds);
}

Bytes LineWaits::WaitForInput(int seconds) {
  const float start = host_.clock.SecondsSinceMidnight();
  while (GoesOn(start, kInputWaitSeconds, seconds)) {
    host_.windows.Rest();
    Bytes got = line_.Take();
    if (!got.empty()) return got;
  }
  return {};
}

Bytes LineWaits::CollectReply(int seconds) {
  ReceiveBuffer& received = line_.Received();
  Bytes line;
  float start = host_.clock.SecondsSinceMidnight();
  while (received.Taken() <= kLongestReply && GoesOn(start, static_cast<float>(seconds), seconds)) {
    if (received.Empty()) {
      host_.windows.Rest();
      received.Append(line_.Take());
    } else {
      host_.windows.Yield();
    }
    if (received.Empty()) continue;
    line += received.TakeFirst();
    if (line == kRefused) return line;
    if (line == kEnded && LineEndsHere()) return line;
    // Every character restarts the wait: it limits the silence, not the line.
    start = host_.clock.SecondsSinceMidnight();
    if (line.back() == kCr) return line;
  }
  return line;
}

bool LineWaits::LineEndsHere() {
  ReceiveBuffer& received = line_.Received();
  const float start = host_.clock.SecondsSinceMidnight();
  while (received.Empty() && std::abs(host_.clock.SecondsSinceMidnight() - start) < kLineGoesOnSeconds) {
    host_.windows.Rest();
    received.Append(line_.Take());
  }
  if (received.Empty()) return true;
  if (received.First() != kCr) return false;
  received.TakeFirst();
  return true;
}

Bytes LineWaits::WakeUp() {
  Bytes answer;
  for (int tries = 0; tries < kWakeUpTries && answer.empty(); ++tries) {
    line_.WriteTrace("TS");
    line_.Send(kWakeUp);
    answer = WaitForInput(kDialogueWait);
  }
  if (!answer.empty()) line_.WriteTrace("R" + answer);
  return answer;
}

}  // namespace ox
