// Records, scrambling and sums of the program files.
#include "programming/program_file.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace ox {
namespace {

constexpr unsigned kScramble = 0x3C;
constexpr std::size_t kCheckWordSize = 2;
constexpr unsigned kByteBits = 8;

/// Between the bytes of a program and those that a file stores; the same way there and back.
char Scrambled(char byte) {
  return ByteOf(~ByteValue(byte) ^ kScramble);
}

unsigned SumOf(BytesView bytes) {
  unsigned sum = 0;
  for (const char byte : bytes) sum += ByteValue(byte);
  return sum;
}

/// Record `number` of a file in plain bytes: only the first is stored so.
Bytes PlainRecord(BytesView file, std::size_t number) {
  Bytes record(file.substr(number * kProgramRecordSize, kProgramRecordSize));
  if (number > 0) std::ranges::transform(record, record.begin(), Scrambled);
  return record;
}

}  // namespace

LoadedProgram ReadProgramFile(BytesView file, const ProgramFormat& format) {
  if (file.size() != format.FileSize()) return {ProgramFileStatus::kWrongSize, {}};
  Bytes program;
  program.reserve(format.ProgramSize());
  for (std::size_t number = 0; number < format.records; ++number) {
    const Bytes record = PlainRecord(file, number);
    if (ByteOf(SumOf(record)) != '\0') return {ProgramFileStatus::kChecksumError, {}};
    program.append(record, 1, kProgramPageSize);
  }
  if (format.checkWordMissing) InsertCheckWord(program, format);
  return {ProgramFileStatus::kGood, std::move(program)};
}

std::string DescribeProgram(BytesView program) {
  const BytesView word = program.substr(program.size() - kCheckWordSize);
  std::array<char, sizeof "FFFF"> hex{};
  std::snprintf(hex.data(), hex.size(), "%02X%02X", ByteValue(word[1]), ByteValue(word[0]));
  return std::to_string(program.size()) + " Bytes, Prüfwort " + hex.data() + " hex";
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
    record += ByteOf(0U - SumOf(record));
    if (number > 0) std::ranges::transform(record, record.begin(), Scrambled);
    file += record;
  }
  return file;
}

void InsertCheckWord(Bytes& program, const ProgramFormat& format) {
  const std::size_t end = program.size() - kCheckWordSize;
  const unsigned word = format.checkWordStart + SumOf(BytesView(program).substr(0, end));
  program[end] = ByteOf(word);
  program[end + 1] = ByteOf(word >> kByteBits);
}

}  // namespace ox
