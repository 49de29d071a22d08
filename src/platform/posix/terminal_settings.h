// The parameters of a serial line, applied to a terminal.
#pragma once

#include <termios.h>

#include "platform/line_settings.h"

namespace ox {

/// Makes a terminal's settings those of the line: raw, without flow control, and with this frame and speed.
/// Throws PortError for a speed that the host does not have.
void SetLine(const LineSettings& settings, termios& wanted);

/// Brings a terminal into raw mode with these parameters and without flow control. Input that waits stays.
/// Throws PortError when the terminal does not take them.
void ApplyLineSettings(const LineSettings& settings, int terminal);

/// Whether a terminal that was asked for some settings has taken the speed and, where it has one, the frame.
bool HasTaken(const termios& taken, const termios& wanted, bool withFrame);

}  // namespace ox
