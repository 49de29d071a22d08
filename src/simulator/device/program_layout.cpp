// Check word and version text of a device program.
#include "simulator/device/program_layout.h"

#include <algorithm>

namespace ox::sim {
namespace {

constexpr std::size_t kCheckWordSize = 2;
constexpr unsigned kByteBits = 8;
constexpr unsigned kWordMask = 0xFFFF;

}  // namespace

unsigned ProgramCheckWord(BytesView program, const ProgramLayout& layout) {
  unsigned sum = layout.sumStart;
  for (const char byte : program.substr(0, layout.size - kCheckWordSize)) sum += ByteValue(byte);
  return sum & kWordMask;
}

void SealProgram(Bytes& program, const ProgramLayout& layout) {
  const unsigned word = ProgramCheckWord(program, layout);
  program[layout.size - 2] = ByteOf(word);
  program[layout.size - 1] = ByteOf(word >> kByteBits);
}

bool ProgramSealed(BytesView program, const ProgramLayout& layout) {
  if (program.size() != layout.size) return false;
  const unsigned low = ByteValue(program[layout.size - 2]);
  const unsigned high = ByteValue(program[layout.size - 1]);
  return (high << kByteBits | low) == ProgramCheckWord(program, layout);
}

bool AllPrintable(BytesView text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return ByteValue(c) >= ' ' && ByteValue(c) <= '~'; });
}

Bytes ProgramVersion(BytesView program) {
  if (program.size() < kVersionAddress + kVersionSize) return {};
  const BytesView text = program.substr(kVersionAddress, kVersionSize);
  return AllPrintable(text) ? Bytes(text) : Bytes();
}

}  // namespace ox::sim
