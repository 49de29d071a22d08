// Records, scrambling and sums of the program files.
#include "programming/program_file.h"

#include <algorithm>
#include <utility>

#include "platform/hex_text.h"

namespace ox {
namespace {

constexpr unsigned kScramble = 0x3C;
constexpr std::size_t kCheckWordSize = 2;
constexpr unsigned kByteBits = 8;

/// Between the bytes of a program and those that a file stores; the same way there and back.
char Scrambled(char byte) {
  return ByteOf(~ByteValue(byte) ^ kScramble);
}

}  // namespace

unsigned ByteSum(BytesView bytes) {
  unsigned sum = 0;
  for (const char byte : bytes) sum += ByteValue(byte);
  return sum;
}

Bytes PlainProgramRecord(BytesView file, std::size_t record) {
  Bytes plain(file.substr(record * kProgramRecordSize, kProgramRecordSize));
  if (record > 0) std::ranges::transform(plain, plain.begin(), Scrambled);
  return plain;
}

LoadedProgram ReadProgramFile(BytesView file, const ProgramFormat& format) {
  if (file.size() != format.FileSize()) return {ProgramFileStatus::kWrongSize, {}};
  Bytes program;
  for (std::size_t number = 0; number < format.records; ++number) {
    const Bytes record = PlainProgramRecord(file, number);
    if (ByteOf(ByteSum(record)) != '\0') return {ProgramFileStatus::kChecksumError, {}};
    program.append(record, 1, kProgramPageSize);
  }
  if (format.checkWordMissing) InsertCheckWord(program, format);
  return {ProgramFileStatus::kGood, std::move(program)};
}

unsigned CheckWordIn(BytesView program) {
  const BytesView word = program.substr(program.size() - kCheckWordSize);
  return ByteValue(word[0]) | ByteValue(word[1]) << kByteBits;
}

std::string DescribeProgram(BytesView program) {
  return std::to_string(program.size()) + " Bytes, Prüfwort " + HexWord(CheckWordIn(program)) + " hex";
}

std::string ProgramFileFault(ProgramFileStatus status, const std::string& path) {
  return status == ProgramFileStatus::kWrongSize ? "Datei " + path + " fehlerhaft!"
                                                 : "Checksummenfehler in Datei " + path + "!";
}

Bytes BuildProgramFile(BytesView program) {
  Bytes file;
  file.reserve(program.size() / kProgramPageSize * kProgramRecordSize);
  for (std::size_t number = 0; number * kProgramPageSize < program.size(); ++number) {
    Bytes record(1, ByteOf(static_cast<unsigned>(number)));
    record += program.substr(number * kProgramPageSize, kProgramPageSize);
    record += ByteOf(0U - ByteSum(record));
    if (number > 0) std::ranges::transform(record, record.begin(), Scrambled);
    file += record;
  }
  return file;
}

void InsertCheckWord(Bytes& program, const ProgramFormat& format) {
  const std::size_t end = program.size() - kCheckWordSize;
  const unsigned word = format.checkWordStart + ByteSum(BytesView(program).substr(0, end));
  program[end] = ByteOf(word);
  program[end + 1] = ByteOf(word >> kByteBits);
}

}  // namespace ox
