// Baud rate, parity and character size of a line's end.
#pragma once

#include <optional>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// What one end of a line is set to.
struct LineSettings {
  unsigned baud = 9600;
  char parity = 'O';      ///< 'O', 'E' or 'N'
  unsigned dataBits = 7;  ///< 5 to 8

  bool operator==(const LineSettings&) const = default;
};

/// The loader's settings, whatever the dialogue runs at.
constexpr LineSettings kLoaderLine{19200, 'N', 8};

/// Reads "9600,O,7,1" (letters of either case); nothing when the text is no such settings string.
std::optional<LineSettings> ParseLineSettings(BytesView text);

/// How long one character occupies the line, start and stop bit included.
Seconds CharacterTime(const LineSettings& line);

/// The characters as they arrive at an end of that character size: 7 bits lose the highest one.
Bytes MaskedTo(BytesView bytes, unsigned dataBits);

}  // namespace ox::sim
