// Device programs to try the loader with: no code, but bytes that tell every block from every other.
#pragma once

#include "platform/bytes.h"
#include "simulator/device/program_layout.h"

namespace ox::sim {

/// Bytes that look like code and stay the same from run to run; another seed gives other bytes.
Bytes CodeLikeBytes(std::size_t count, unsigned seed);

/// A sealed program with the version at its place, cut or padded with blanks to kVersionSize characters.
Bytes SampleProgram(const ProgramLayout& layout, BytesView version, unsigned seed);

/// Writes the version text, cut or padded, to its place in a program that reaches that far.
void PutVersion(Bytes& program, BytesView version);

}  // namespace ox::sim
