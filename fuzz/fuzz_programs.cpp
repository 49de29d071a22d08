// Files that hold a program: any bytes, and sound ones with changes, are taken as a whole or not at all.
#include "harness.h"
#include "programming/loader_hex.h"
#include "programming/program_file.h"
#include "simulator/demo/demo_files.h"

namespace ox {
namespace {

void ReadLoader(const Bytes& text) {
  constexpr std::size_t kImageSize = 0x8010;  // little more than what is packed, so that records run past it
  Bytes image(kImageSize, '\x55');
  const bool good = ReadLoaderHex(text, image);
  Require(image.size() == kImageSize && (!good || text.find(":000000") != Bytes::npos));
}

/// Lines whose digits and sums are sound, so that addresses are tried as well.
Bytes SoundLines(BytesView input) {
  const std::size_t address = input.size() < 2 ? 0 : ByteValue(input[0]) % 0x81 << 8U | ByteValue(input[1]);
  return sim::HexLines(address, input) + ":00000001FF\r\n";
}

void ReadProgram(BytesView input) {
  // Small, so that a run takes little time; the second and third record are scrambled.
  constexpr ProgramFormat kFormat{.records = 3, .checkWordStart = 2, .checkWordMissing = false};
  Require(ReadProgramFile(input, kFormat).program.size() % kFormat.ProgramSize() == 0);
  Bytes program(input.empty() ? "\xA5" : input);
  while (program.size() < kFormat.ProgramSize()) program += Bytes(program);
  program.resize(kFormat.ProgramSize());
  const Bytes file = BuildProgramFile(program);
  Require(file.size() == kFormat.FileSize() && ReadProgramFile(file, kFormat).program == program);
  // One change is noticed or does not reach the program.
  const auto [status, changed] = ReadProgramFile(Damaged(file, input), kFormat);
  if (status != ProgramFileStatus::kGood) return;
  Require(input.size() / kEditSize <= 1 ? changed == program : changed.size() == program.size());
}

/// Generation II has its check word from the loading: whatever stands in its place, all else stays.
void PutCheckWord(BytesView input) {
  constexpr ProgramFormat kFormat{.records = 2, .checkWordStart = 1, .checkWordMissing = true};
  Bytes program(input.substr(0, kFormat.ProgramSize()));
  program.resize(kFormat.ProgramSize(), '\x5A');
  const Bytes loaded = ReadProgramFile(BuildProgramFile(program), kFormat).program;
  unsigned sum = 1;
  for (std::size_t at = 0; at + 2 < program.size(); ++at) sum += ByteValue(program[at]);
  program.replace(program.size() - 2, 2, {ByteOf(sum), ByteOf(sum / 256)});
  Require(loaded == program);
}

}  // namespace

void Fuzz(unsigned choice, BytesView input) {
  if (choice % 4 == 0) return ReadProgram(input);
  if (choice % 4 == 3) return PutCheckWord(input);
  ReadLoader(choice % 4 == 1 ? Bytes(input) : SoundLines(input));
}

}  // namespace ox
