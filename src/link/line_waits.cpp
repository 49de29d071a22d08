// What the text dialogue waits for.
#include "link/line_waits.h"

#include "link/line_protocol.h"
#include "link/port_waits.h"
#include "platform/line_ends.h"

namespace ox {

Bytes LineWaits::WaitForInput(int seconds) {
  return FirstPiece(machine_, line_.Port(), FixedSecond{seconds});
}

Bytes LineWaits::CollectReply(int seconds) {
  Bytes line;
  if (received_.Taken() > kLongestReply) return line;
  const auto look = [&] {
    if (!Receive()) return Found::kNothing;
    line += received_.TakeFirst();
    if (Whole(line)) return Found::kAll;
    return received_.Empty() ? Found::kCharacter : Found::kMoreInHand;
  };
  Wait(machine_, SilenceOf{seconds}, look, !received_.Empty());
  return line;
}

bool LineWaits::Receive() {
  if (received_.Empty()) received_.Append(line_.Port().Input());
  return !received_.Empty();
}

bool LineWaits::Whole(const Bytes& line) {
  if (line == kNo || line.back() == kCr || received_.Taken() > kLongestReply) return true;
  return line == kEndOfDialogue && LineEndsHere();
}

bool LineWaits::LineEndsHere() {
  const Difference rule{machine_.clock.SecondsSinceMidnight(), kRestOfLineWait};
  const auto look = [this] { return Receive() ? Found::kAll : Found::kNothing; };
  if (received_.Empty() && !Wait(machine_, rule, look)) return true;
  if (received_.First() != kCr) return false;
  received_.TakeFirst();
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
