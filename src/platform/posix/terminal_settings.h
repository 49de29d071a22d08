// The parameters of a serial line, applied to a terminal.
#pragma once

#include "platform/line_settings.h"

namespace ox {

/// Brings a terminal into raw mode with these parameters and without flow control. Input that waits stays.
/// Throws PortError when the terminal does not take them.
void ApplyLineSettings(const LineSettings& settings, int terminal);

}  // namespace ox
