// Loader hex files and what is packed from them.
#include "programming/firmware_packing.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

#include "programming/demo_file.h"
#include "programming/loader_hex.h"
#include "programming/program_file.h"
#include "simulator/demo_files.h"
#include "simulator/program_layout.h"
#include "simulator/sample_program.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

const Bytes kEnd = ":00000001FF\r\n";

/// An image of zeros after the text, or "faulty".
Bytes ImageOf(const Bytes& text, std::size_t size = 0x10000) {
  Bytes image(size, '\0');
  return ReadLoaderHex(text, image) ? image : "faulty";
}

Bytes Zeros(std::size_t at, const Bytes& bytes, std::size_t size = 0x10000) {
  Bytes image(size, '\0');
  return image.replace(at, bytes.size(), bytes);
}

/// A record without its sum, to which the check byte is added.
Bytes Record(const Bytes& digits) {
  unsigned sum = 0;
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    sum += static_cast<unsigned>(std::stoul(digits.substr(at, 2), nullptr, 16));
  }
  std::array<char, 3> check{};
  std::snprintf(check.data(), check.size(), "%02X", (256 - sum % 256) % 256);
  return ":" + digits + check.data();
}

Bytes Repeated(const Bytes& text, std::size_t times) {
  Bytes all;
  while (times-- > 0) all += text;
  return all;
}

TEST(LoaderHex, WritesEveryRecordToItsPlace) {
  const struct {
    const char* what;
    Bytes text, image;
  } rows[] = {
      {"no records", kEnd, Zeros(0, "")},
      {"one byte", Record("0100FF0041") + "\r\n" + kEnd, Zeros(0xFF, "A")},
      {"on into the next page", Record("0412FE0041424344") + "\n" + kEnd, Zeros(0x12FE, "ABCD")},
      {"fields at commas", Record("0100000041") + "," + Record("0100010042") + "," + kEnd, Zeros(0, "AB")},
      {"line feeds, end record without one", Record("0100000041") + "\n:00000001FF", Zeros(0, "A")},
      {"a later record over an earlier one", Record("0200000041") + "\n" + Record("0100000042") + "\n" + kEnd,
       Zeros(0, "B")},
      {"count and type do not matter", Record("7700200941") + "\n" + kEnd, Zeros(0x20, "A")},
      {"no data", Record("01002000") + "\n" + kEnd, Zeros(0, "")},
      {"0x8000 and above is left out", Record("0180000041") + "\n" + Record("01FFFF004142") + "\n" + kEnd,
       Zeros(0, "")},
      {"on past 0x8000", Record("047FFE0041424344") + "\n" + kEnd, Zeros(0x7FFE, "ABCD")},
      {"up to the last byte", Record("017FFF00" + Repeated("41", 0x8001)) + "\n" + kEnd,
       Zeros(0x7FFF, Bytes(0x8001, 'A'))},
      {"nothing counts after the end record", Record("0100000041") + "\n" + kEnd + "rubbish", Zeros(0, "A")},
      {"whatever the end record says", Record("0100000041") + "\n:000000zz", Zeros(0, "A")},
  };
  for (const auto& row : rows) EXPECT_TRUE(ImageOf(row.text) == row.image) << row.what;
}

TEST(LoaderHex, FaultyFilesAreRefused) {
  const Bytes good = Record("0100000041") + "\n";
  for (const Bytes& text :
       {Bytes(), Bytes("\r\n"), good, good + ":00000", good + "x\n" + kEnd, good + "\n" + kEnd,
        good + " " + kEnd, Bytes("\xEF\xBB\xBF") + good + kEnd, ":01000000414\n" + kEnd,
        ":010000004\n" + kEnd, ":0100000041BF\n" + kEnd, ":01000a00411B\n:01000A0041b4\n" + kEnd,
        ":01000A00 41B4\n" + kEnd, Record("0100000041") + " \n" + kEnd, ":\n" + kEnd, ":01FF\n" + kEnd,
        Record("010000") + "\n" + kEnd, Record("017FFF00" + Repeated("41", 0x8002)) + "\n" + kEnd}) {
    EXPECT_TRUE(ImageOf(text) == "faulty") << text.substr(0, 40);
  }
}

TEST(LoaderHex, OneCharacterChangedIsRefusedOrChangesNothing) {
  constexpr std::size_t kSize = 0x200;
  const Bytes sound =
      Record("0300F0004F5821") + "\r\n" + Record("0200FF00C3A4") + "," + Record("0190000041") + "\n" + kEnd;
  const Bytes image = ImageOf(sound, kSize);
  ASSERT_EQ(image.size(), kSize);
  for (std::size_t at = 0; at < sound.size(); ++at) {
    for (unsigned value = 0; value < 256; ++value) {
      Bytes changed = sound;
      changed[at] = ByteOf(value);
      const Bytes result = ImageOf(changed, kSize);
      ASSERT_TRUE(result == image || result == "faulty") << at << ' ' << value;
    }
    const Bytes cut = ImageOf(sound.substr(0, at), kSize);
    ASSERT_TRUE(cut == "faulty" || at + kEnd.size() > sound.size()) << "cut off at " << at;
  }
}

/// Always the same number.
class Constant : public RandomNumbers {
 public:
  explicit Constant(double number) : number_(number) {}
  double Next() override { return number_; }

 private:
  double number_;
};

TEST(FirmwarePacking, FillsWhatNoRecordWrites) {
  for (const auto& [number, filler] : {std::pair{0.0, 0U}, {0.0021, 1U}, {0.5, 125U}, {0.99999, 250U}}) {
    Constant random(number);
    const auto file = PackFirmware(kEnd, random);
    ASSERT_TRUE(file);
    Bytes expected(kProgramFormat3.ProgramSize(), ByteOf(filler));
    sim::SealProgram(expected, sim::kLargeProgram);
    EXPECT_TRUE(ReadProgramFile(*file, kProgramFormat3).program == expected) << number;
  }
}

TEST(FirmwarePacking, PacksWhatTheUpdateLoads) {
  TestRandom random;
  const auto file = PackFirmware(DemoFile("OX3NEU.LDR"), random);
  ASSERT_TRUE(file);
  const LoadedProgram loaded = ReadProgramFile(*file, kProgramFormat3);
  ASSERT_EQ(loaded.status, ProgramFileStatus::kGood);
  EXPECT_TRUE(sim::ProgramSealed(loaded.program, sim::kLargeProgram));
  EXPECT_EQ(sim::ProgramVersion(loaded.program), "V5.20 22.11.2026");
  EXPECT_EQ(*file, sim::ProgramFile(loaded.program));
  const Bytes piece = ImageOf(DemoFile("OX3NEU.LDR")).substr(0x40F0, 0x40);
  EXPECT_EQ(loaded.program.substr(0x40F0, 0x40), piece) << "a piece across two pages";
  EXPECT_NE(loaded.program.substr(0x8000, 0x40), piece) << "above what is packed";
  EXPECT_FALSE(PackFirmware(DemoFile("OX3NEU.LDR").substr(1), random));
}

}  // namespace
}  // namespace ox::test
