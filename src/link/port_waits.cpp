// Waits for what a port delivers, as whole pieces.
#include "link/port_waits.h"

#include "link/line_protocol.h"
#include "platform/line_ends.h"

namespace ox {

Bytes FirstPiece(Machine& machine, SerialPort& port, const EndRule& rule) {
  Bytes piece;
  Wait(machine, rule, [&] {
    piece = port.Input();
    return piece.empty() ? Found::kNothing : Found::kAll;
  });
  return piece;
}

Bytes PiecesToCr(Machine& machine, SerialPort& port, const EndRule& rule) {
  Bytes text;
  Wait(machine, rule, [&] {
    text += port.Input();
    return text.ends_with(kCr) || text.size() > kLongestReply ? Found::kAll : Found::kNothing;
  });
  return text;
}

}  // namespace ox
