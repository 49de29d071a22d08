// What arrives of a character, whether the two ends of a line have the same settings or not.
#pragma once

#include <vector>

#include "platform/bytes.h"
#include "simulator/line/line_settings.h"

namespace ox::sim {

/// A character as the receiving end takes it.
struct HeardCharacter {
  char character = 0;
  bool damaged = false;  ///< its parity or its stop bit is wrong

  bool operator==(const HeardCharacter&) const = default;
};

/// What an end set to `to` hears of one character that an end set to `from` sends: that character when both
/// are set alike, at another baud rate none, one or several others. The line is idle before and behind it.
std::vector<HeardCharacter> Cross(char character, const LineSettings& from, const LineSettings& to);

/// What a PC set to `pc` reads of the characters: a damaged one is NUL where it checks the parity, and stands
/// as it was heard where it does not.
Bytes CrossToPc(BytesView characters, const LineSettings& from, const LineSettings& pc);

}  // namespace ox::sim
