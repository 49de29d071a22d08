// A PC in virtual time at the other end of a simulated line.
#pragma once

#include <algorithm>
#include <initializer_list>

#include "simulator/endpoint.h"

namespace ox::sim {

struct LinePc {
  Endpoint& end;
  LineSettings line = {9600, 'O', 7};
  Seconds now = 0;

  /// Sends one text after the other and takes what comes before a silence of one second; each reply ends with
  /// "|".
  Bytes Talk(std::initializer_list<Bytes> texts) {
    Bytes replies;
    for (const Bytes& text : texts) {
      end.Receive(text, line, now);
      for (auto next = end.NextOutput(); next && *next < now + 1; next = end.NextOutput()) {
        now = std::max(now, *next);
        replies += end.TakeOutput(now);
      }
      replies += "|";
    }
    return replies;
  }
};

}  // namespace ox::sim
