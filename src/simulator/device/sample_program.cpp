// Making programs to try the loader with.
#include "simulator/device/sample_program.h"

#include <cstdint>

namespace ox::sim {
namespace {

// A linear congruential generator; of its 32 bits the upper ones are the random ones.
constexpr std::uint32_t kMultiplier = 1664525;
constexpr std::uint32_t kIncrement = 1013904223;
constexpr unsigned kTopByteShift = 24;

}  // namespace

Bytes CodeLikeBytes(std::size_t count, unsigned seed) {
  Bytes bytes(count, '\0');
  std::uint32_t state = seed;
  for (char& byte : bytes) {
    state = state * kMultiplier + kIncrement;
    byte = ByteOf(state >> kTopByteShift);
  }
  return bytes;
}

void PutVersion(Bytes& program, BytesView version) {
  Bytes text(version.substr(0, kVersionSize));
  text.resize(kVersionSize, ' ');
  program.replace(kVersionAddress, kVersionSize, text);
}

Bytes SampleProgram(const ProgramLayout& layout, BytesView version, unsigned seed) {
  Bytes program = CodeLikeBytes(layout.size, seed);
  PutVersion(program, version);
  SealProgram(program, layout);
  return program;
}

}  // namespace ox::sim
