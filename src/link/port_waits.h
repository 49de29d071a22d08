// Waits for what a port delivers, as whole pieces.
#pragma once

#include "link/wait.h"
#include "platform/serial_port.h"

namespace ox {

/// The first non-empty text that the port delivers, one character or several; empty when the rule ends the
/// wait. Throws PortError.
Bytes FirstPiece(Machine& machine, SerialPort& port, const EndRule& rule);

/// All that the port delivers until a piece ends with CR, the text is longer than kLongestReply or the rule
/// ends the wait. Throws PortError.
Bytes PiecesToCr(Machine& machine, SerialPort& port, const EndRule& rule);

}  // namespace ox
