// The parameters of a serial line, applied to a port.
#pragma once

#include "platform/line_settings.h"

namespace ox {

/// Sets an open port (its handle) up: these parameters, no flow control, data-terminal-ready and
/// request-to-send on, a damaged character read as NUL; a read then waits until it is full, a write until all
/// is sent. What was received stays. Throws PortError when the port is no serial one or does not take the
/// parameters.
void ApplyLineSettings(const LineSettings& settings, void* port);

}  // namespace ox
