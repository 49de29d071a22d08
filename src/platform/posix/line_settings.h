// The parameters of a serial line: read from their text, applied to a terminal.
#pragma once

#include <termios.h>

#include <chrono>
#include <string_view>

namespace ox {

enum class LineParity { kNone, kOdd, kEven };

struct LineSettings {
  unsigned baud = 0;   // bits per second
  speed_t speed = B0;  // the same as the host's code
  LineParity parity = LineParity::kNone;
  int dataBits = 0;  // 7 or 8
  int stopBits = 0;  // 1 or 2

  /// Which bits of a byte the line carries.
  unsigned DataMask() const { return (1U << dataBits) - 1; }

  /// How long one character takes on the line, its start, parity and stop bits included.
  std::chrono::nanoseconds CharacterTime() const;
};

/// Reads "<baud>,<parity>,<data bits>,<stop bits>", parity being N, O or E of either case, for example
/// "9600,O,7,1"; throws PortError when a value is missing, unknown or one too many.
LineSettings ParseLineSettings(std::string_view text);

/// Brings a terminal into raw mode with these parameters and without flow control. Input that waits stays.
/// Throws PortError when the terminal does not take them.
void ApplyLineSettings(const LineSettings& settings, int terminal);

}  // namespace ox
