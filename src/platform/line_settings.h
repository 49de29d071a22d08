// The parameters of a serial line, read from their text.
#pragma once

#include <chrono>
#include <string_view>

#include "platform/bytes.h"

namespace ox {

enum class LineParity { kNone, kOdd, kEven };

struct LineSettings {
  unsigned baud = 0;  // bits per second
  LineParity parity = LineParity::kNone;
  int dataBits = 0;  // 7 or 8
  int stopBits = 0;  // 1 or 2

  /// The bytes as the line carries them: without the bits above its data bits.
  Bytes Cut(BytesView bytes) const;

  /// How long one character takes on the line, its start, parity and stop bits included.
  std::chrono::nanoseconds CharacterTime() const;
};

/// Reads "<baud>,<parity>,<data bits>,<stop bits>", parity being N, O or E of either case, for example
/// "9600,O,7,1"; throws PortError when a value is missing, unknown or one too many.
LineSettings ParseLineSettings(std::string_view text);

}  // namespace ox
