// Program files, against a writer of the format made elsewhere.
#include "programming/program_file.h"

#include <gtest/gtest.h>

#include "simulator/demo_files.h"
#include "simulator/sample_program.h"

namespace ox::test {
namespace {

using Status = ProgramFileStatus;

Status StatusOf(BytesView file, const ProgramFormat& format) {
  const LoadedProgram loaded = ReadProgramFile(file, format);
  EXPECT_EQ(loaded.program.empty(), loaded.status != Status::kGood);
  return loaded.status;
}

TEST(ProgramFile, IsBuiltAsItIsRead) {
  const Bytes program = sim::CodeLikeBytes(kProgramFormat3.ProgramSize(), 7);
  const Bytes file = BuildProgramFile(program);
  EXPECT_EQ(file, sim::ProgramFile(program));
  EXPECT_EQ(ReadProgramFile(file, kProgramFormat3).program, program) << "a .pr3 is taken as it stands";
}

TEST(ProgramFile, OfGeneration2GetsItsCheckWord) {
  Bytes expected(32768, '\0');
  expected[0x7FFE] = '\x01';
  EXPECT_EQ(ReadProgramFile(BuildProgramFile(Bytes(32768, '\0')), kProgramFormat2).program, expected);
  // 32766 x 255 + 1 leaves 0x7E03 of 16 bits; what stood in the word's place does not count.
  const Bytes full = ReadProgramFile(BuildProgramFile(Bytes(32768, '\xFF')), kProgramFormat2).program;
  EXPECT_EQ(full.substr(0x7FFD), Bytes("\xFF\x03\x7E"));
}

TEST(ProgramFile, OfAnotherSizeIsRefused) {
  const Bytes large = sim::DemoProgram3();
  const Bytes small = sim::DemoProgram2();
  for (const std::size_t size : {0U, 258U, 33023U, 33024U, 33025U, 66047U, 66048U, 66049U}) {
    Bytes file = large.substr(0, size);
    file.resize(size, '\0');
    EXPECT_EQ(StatusOf(file, kProgramFormat2), size == 33024 ? Status::kGood : Status::kWrongSize) << size;
    EXPECT_EQ(StatusOf(file, kProgramFormat3), size == 66048 ? Status::kGood : Status::kWrongSize) << size;
  }
  EXPECT_EQ(StatusOf(small + small, kProgramFormat3), Status::kChecksumError) << "record 0 is stored plain";
}

TEST(ProgramFile, WithOneByteChangedIsRefused) {
  // Every change of every byte of a plain and a scrambled record.
  constexpr ProgramFormat kShort{.records = 2, .checkWordStart = 1, .checkWordMissing = true};
  Bytes file = BuildProgramFile(sim::CodeLikeBytes(kShort.ProgramSize(), 3));
  ASSERT_EQ(StatusOf(file, kShort), Status::kGood);
  for (char& byte : file) {
    const char sound = byte;
    for (unsigned flipped = 1; flipped < 256; ++flipped) {
      byte = ByteOf(ByteValue(sound) ^ flipped);
      ASSERT_EQ(StatusOf(file, kShort), Status::kChecksumError) << &byte - file.data();
    }
    byte = sound;
  }
  // One change in each record of the real sizes, all the way through a record.
  for (const ProgramFormat& format : {kProgramFormat2, kProgramFormat3}) {
    const Bytes sound = format.records == 128 ? sim::DemoProgram2() : sim::DemoProgram3();
    for (std::size_t at = 0; at < sound.size(); at += kProgramRecordSize + 1) {
      Bytes changed = sound;
      changed[at] = ByteOf(ByteValue(changed[at]) ^ 0x80U);
      EXPECT_EQ(StatusOf(changed, format), Status::kChecksumError) << at;
    }
  }
}

}  // namespace
}  // namespace ox::test
