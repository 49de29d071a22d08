// A PC in virtual time at the other end of a simulated line.
#pragma once

#include <initializer_list>

#include "simulator/endpoint.h"

namespace ox::sim {

struct LinePc {
  Endpoint& end;
  LineSettings line = {9600, 'O', 7};
  Seconds now = 0;

  /// Sends one text after the other and takes what comes within a second; each reply ends with "|".
  Bytes Talk(std::initializer_list<Bytes> texts) {
    Bytes replies;
    for (const Bytes& text : texts) {
      end.Receive(text, line, now);
      now += 1;
      replies += end.TakeOutput(now) + "|";
    }
    return replies;
  }
};

}  // namespace ox::sim
