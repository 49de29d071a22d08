// Any bytes as changes to a sound program file: it loads as it was or not at all. Any bytes as a program:
// what is built from it is read back.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "programming/program_file.h"

namespace {

using ox::Bytes;
using ox::ByteValue;

void Require(bool holds) {
  if (!holds) std::abort();
}

/// Small, so that a run takes little time; the second and third record are scrambled.
constexpr ox::ProgramFormat kFormat{.records = 3, .checkWordStart = 2, .checkWordMissing = false};
/// Where a change goes, in two bytes, and what is flipped there.
constexpr std::size_t kChangeSize = 3;

Bytes ProgramOf(ox::BytesView seed) {
  Bytes program;
  while (program.size() < kFormat.ProgramSize()) program.append(seed.empty() ? "\xA5" : seed);
  program.resize(kFormat.ProgramSize());
  return program;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ox::BytesView input(reinterpret_cast<const char*>(data), size);
  for (const ox::ProgramFormat& format : {kFormat, ox::kProgramFormat2, ox::kProgramFormat3}) {
    const ox::LoadedProgram any = ReadProgramFile(input, format);
    Require(any.program.size() == (any.status == ox::ProgramFileStatus::kGood ? format.ProgramSize() : 0));
  }
  const Bytes program = ProgramOf(input);
  Bytes file = ox::BuildProgramFile(program);
  Require(file.size() == kFormat.FileSize() && ReadProgramFile(file, kFormat).program == program);

  std::size_t changes = 0;
  for (std::size_t at = 0; at + kChangeSize <= size; at += kChangeSize, ++changes) {
    char& byte = file[(std::size_t{data[at]} << 8U | data[at + 1]) % file.size()];
    byte = ox::ByteOf(ByteValue(byte) ^ data[at + 2]);
  }
  const ox::LoadedProgram changed = ReadProgramFile(file, kFormat);
  const bool good = changed.status == ox::ProgramFileStatus::kGood;
  if (good && changes == 1) Require(changed.program == program);
  if (good) Require(changed.program.size() == kFormat.ProgramSize());
  return 0;
}
