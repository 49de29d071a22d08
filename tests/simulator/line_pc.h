// A PC in virtual time at the other end of a simulated line.
#pragma once

#include <algorithm>

#include "simulator/endpoint.h"

namespace ox::sim {

class LinePc {
 public:
  explicit LinePc(Endpoint& end, LineSettings line = {9600, 'O', 7}) : end_(end), line_(line) {}

  void Set(LineSettings line) { line_ = line; }
  Seconds Now() const { return now_; }
  void Pass(Seconds span) { now_ += span; }
  void Send(BytesView bytes) { end_.Receive(bytes, line_, now_); }

  /// Sends, then takes everything that comes before a silence of one second.
  Bytes Ask(BytesView bytes) {
    Send(bytes);
    Bytes reply;
    constexpr Seconds kSilence = 1;
    for (auto next = end_.NextOutput(); next && *next < now_ + kSilence; next = end_.NextOutput()) {
      now_ = std::max(now_, *next);
      reply += end_.TakeOutput(now_);
    }
    return reply;
  }

  /// A whole dialogue; "-" and the wake-up's answer when that is not "A".
  Bytes Dialogue(BytesView request) {
    const Bytes ready = Ask("S");
    if (ready != "A") return "-" + ready;
    Bytes reply = Ask(request);
    Send("A");
    return reply;
  }

 private:
  Endpoint& end_;
  LineSettings line_;
  Seconds now_ = 0;
};

}  // namespace ox::sim
