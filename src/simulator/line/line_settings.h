// Baud rate, parity and character size of a line's end, and whether two ends understand each other.
#pragma once

#include <optional>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// What one end of a line is set to. A pseudo-terminal passes on only the baud rate and the odd-parity flag,
/// so an end may be known in part.
struct LineSettings {
  static constexpr unsigned kUnknownBits = 0;  ///< character size that nobody can tell
  static constexpr char kNotOdd = '-';         ///< even or no parity, nobody can tell which

  unsigned baud = 9600;
  char parity = 'O';      ///< 'O', 'E', 'N' or kNotOdd
  unsigned dataBits = 7;  ///< 7, 8 or kUnknownBits

  bool operator==(const LineSettings&) const = default;
};

/// The loader's settings, whatever the dialogue runs at.
constexpr LineSettings kLoaderLine{19200, 'N', 8};

/// Reads "9600,O,7,1" (letters of either case); nothing when the text is no such settings string.
std::optional<LineSettings> ParseLineSettings(BytesView text);

/// Whether two ends understand each other as far as their settings are known.
bool Fits(const LineSettings& one, const LineSettings& other);

/// How long one character occupies the line, start and stop bit included.
Seconds CharacterTime(const LineSettings& line);

/// The characters as they arrive at an end of that character size: 7 bits lose the highest one.
Bytes MaskedTo(BytesView bytes, unsigned dataBits);

}  // namespace ox::sim
