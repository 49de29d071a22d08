// How a device program lies in its memory: size, check word, and where it tells its version.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox::sim {

/// The program area of a device generation. Its last two bytes are the check word, low byte first.
struct ProgramLayout {
  std::size_t size;   ///< in bytes, check word included
  unsigned sumStart;  ///< what the check word's sum starts at
};
inline constexpr ProgramLayout kSmallProgram{0x8000, 1};   // generations I and II
inline constexpr ProgramLayout kLargeProgram{0x10000, 2};  // generation III

/// Where a program carries its software version: a text of printable 7-bit characters.
inline constexpr std::size_t kVersionAddress = 0x0100;
inline constexpr std::size_t kVersionSize = 16;

/// The check word that belongs to a program of the layout's size: a 16-bit sum over all its bytes but its
/// last two.
unsigned ProgramCheckWord(BytesView program, const ProgramLayout& layout);

/// Puts the check word that belongs to the program at its end.
void SealProgram(Bytes& program, const ProgramLayout& layout);

/// Whether the program has the layout's size and ends with the right check word.
bool ProgramSealed(BytesView program, const ProgramLayout& layout);

/// Whether a text consists of printable 7-bit characters, as a version must.
bool AllPrintable(BytesView text);

/// The version text of a program, kVersionSize characters; empty when the place holds anything unprintable.
Bytes ProgramVersion(BytesView program);

}  // namespace ox::sim
