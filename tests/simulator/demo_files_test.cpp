// The demo programs: that they are what the folder holds, and sound by the layout of their files.
#include "simulator/demo_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "simulator/program_layout.h"

namespace ox::sim {
namespace {

Bytes DemoFile(const std::string& name) {
  std::ifstream file(std::string(OX_DEMO_FOLDER "/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(DemoFiles, AreThoseOfTheFolder) {
  EXPECT_EQ(DemoProgram2(), DemoFile("ox2.pro"));
  EXPECT_EQ(DemoProgram3(), DemoFile("ox3.pr3"));
  EXPECT_EQ(DemoLoaderHex(), DemoFile("OX3NEU.LDR"));
}

TEST(DemoFiles, HoldSoundRecords) {
  const struct {
    Bytes file;
    std::size_t records;
    const char* version;
  } rows[] = {{DemoProgram2(), 128, "V4.20 22.11.2026"}, {DemoProgram3(), 256, "V5.10 22.11.2026"}};
  for (const auto& row : rows) {
    ASSERT_EQ(row.file.size(), row.records * 258);
    Bytes program;
    for (std::size_t at = 0; at < row.file.size(); at += 258) {
      Bytes record = row.file.substr(at, 258);
      unsigned sum = 0;
      for (char& byte : record) {
        if (at > 0) byte = ByteOf(255 - (ByteValue(byte) ^ 0x3CU));
        sum += ByteValue(byte);
      }
      EXPECT_EQ(sum % 256, 0U) << at;
      EXPECT_EQ(ByteValue(record[0]), at / 258);
      program += record.substr(1, 256);
    }
    EXPECT_EQ(ProgramVersion(program), row.version);
    EXPECT_EQ(ProgramSealed(program, kLargeProgram), row.records == 256)
        << "a .pro is sealed when it is loaded";
  }
}

TEST(DemoFiles, HoldSoundHexLines) {
  std::istringstream lines(DemoLoaderHex());
  Bytes program(0x10000, '\0');
  std::string line;
  for (bool ended = false; !ended; ended = line.starts_with(":000000")) {
    ASSERT_TRUE(std::getline(lines, line)) << "no end record";
    ASSERT_EQ(line.front(), ':');
    ASSERT_EQ(line.back(), '\r');
    line = line.substr(1, line.size() - 2);
    ASSERT_EQ(line.find_first_not_of("0123456789ABCDEF"), std::string::npos);
    Bytes record;
    unsigned sum = 0;
    for (std::size_t at = 0; at < line.size(); at += 2) {
      record += ByteOf(static_cast<unsigned>(std::stoul(line.substr(at, 2), nullptr, 16)));
      sum += ByteValue(record.back());
    }
    EXPECT_EQ(sum % 256, 0U) << line;
    ASSERT_EQ(record.size(), ByteValue(record[0]) + 5U);
    program.replace(ByteValue(record[1]) * 256 + ByteValue(record[2]), record.size() - 5,
                    record.substr(4, record.size() - 5));
    line.insert(0, ":");
  }
  EXPECT_EQ(ProgramVersion(program), "V5.20 22.11.2026");
  EXPECT_NE(program[0x8000], '\0') << "a record that is not packed";
}

}  // namespace
}  // namespace ox::sim
