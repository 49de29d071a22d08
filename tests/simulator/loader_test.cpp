// The loader of the simulated device, spoken to by frames made by hand.
#include "simulator/loader.h"

#include <gtest/gtest.h>

#include <string_view>

#include "simulator/sample_program.h"

namespace ox::sim {
namespace {

using namespace std::string_view_literals;

constexpr BytesView kFactoryVersion = "V3.00 01.02.2020";

Bytes Frame(char letter, std::size_t address = 0, BytesView data = {}) {
  Bytes frame = Bytes(1, letter) + "\x13\x58";
  for (const std::size_t value : {std::size_t{0}, address / 256, address, data.size()}) {
    frame += ByteOf(static_cast<unsigned>(value));
  }
  unsigned sum = 0;
  for (const char byte : frame) sum += ByteValue(byte);
  frame += ByteOf(256 - sum % 256);
  return frame.append(data);
}

// A loader with its memory, started, and a clock that the test turns.
struct Bench {
  explicit Bench(const LoaderModel& model)
      : memory(model.preparesProgram ? kSmallProgram : kLargeProgram, kFactoryVersion),
        loader(model, memory, faults) {
    loader.Start();
  }

  Bytes Send(BytesView bytes) {
    Bytes all;
    for (const TimedReply& reply : loader.Receive(bytes, now)) all += reply.bytes;
    return all;
  }
  Bytes SendSingly(BytesView bytes) {
    Bytes all;
    for (const char byte : bytes) {
      now += 0.01;
      all += Send({&byte, 1});
    }
    return all;
  }
  // One request as the PC makes it: wake-up, then the frame.
  Bytes Ask(char letter, std::size_t address = 0, BytesView data = {}) {
    EXPECT_EQ(Send("S"), "A");
    return Send(Frame(letter, address, data));
  }
  Bytes AskAll(BytesView letters) {
    Bytes replies;
    for (const char letter : letters) replies += Ask(letter);
    return replies;
  }
  // Sends blocks of 256 bytes until one is refused; the number of those accepted.
  std::size_t SendBlocks(BytesView content) {
    std::size_t at = 0;
    while (at < content.size() && Ask('P', at, content.substr(at, 256)) == "A") at += 256;
    return at / 256;
  }

  DeviceMemory memory;
  ReplyFaults faults;
  Loader loader;
  Seconds now = 100;
};

// An image no two blocks of which are alike, with its checksum.
Bytes TableImage() {
  Bytes image = CodeLikeBytes(16382, 7);
  unsigned sum = 2;
  for (const char byte : image) sum += ByteValue(byte);
  return image + ByteOf(sum) + ByteOf(sum >> 8U);
}

// The frames without data, byte by byte, in an order in which each device is left in a telling state.
TEST(Loader, AnswersTheCatalogueOfItsGeneration) {
  struct Row {
    BytesView frame;
    char before30, second, third;
  };
  const Row rows[] = {
      {"\x56\x13\x58\0\0\0\0\x3F"sv, 'A', 'A', 'A'}, {"\x57\x13\x58\0\0\0\0\x3E"sv, 'N', 'N', 'N'},
      {"\x61\x13\x58\0\0\0\0\x34"sv, 'N', 'A', 'N'}, {"\x62\x13\x58\0\0\0\0\x33"sv, 'N', 'N', 'A'},
      {"\x63\x13\x58\0\0\0\0\x32"sv, 'N', 'N', 'A'}, {"\x32\x13\x58\0\0\0\0\x63"sv, 'A', 'A', 'A'},
      {"\x31\x13\x58\0\0\0\0\x64"sv, 'N', 'N', 'N'}, {"\x30\x13\x58\0\0\0\0\x65"sv, 'A', 'A', 'N'},
      {"\x31\x13\x58\0\0\0\0\x64"sv, 'A', 'A', 'N'}, {"\x56\x13\x58\0\0\0\0\x3F"sv, 'N', 'N', 'A'},
      {"\x4C\x13\x58\0\0\0\0\x49"sv, 'A', 'A', 'A'}, {"\x58\x13\x58\0\0\0\0\x3D"sv, 'N', 'N', 'A'}};
  Bench before30(kLoaderBefore30);
  Bench second(kLoaderGeneration2);
  Bench third(kLoaderGeneration3);
  for (const Row& row : rows) {
    for (const auto& [bench, reply] :
         {std::pair{&before30, row.before30}, std::pair{&second, row.second}, std::pair{&third, row.third}}) {
      EXPECT_EQ(bench->Send("S"), "A");
      EXPECT_EQ(bench->SendSingly(row.frame), Bytes(1, reply)) << row.frame[0];
    }
  }
  EXPECT_TRUE(second.loader.Running()) << "has no program to restart with";
  EXPECT_FALSE(third.loader.Running());
  EXPECT_EQ(third.Send("S"), "") << "what comes after the restart is the dialogue's";
}

TEST(Loader, NeedsAWakeUpBeforeEveryFrame) {
  Bench bench(kLoaderGeneration2);
  EXPECT_EQ(bench.Send(Frame('V')), "");
  EXPECT_EQ(bench.Send("S"), "A");
  EXPECT_EQ(bench.Send("S"), "A") << "the first answer was not seen";
  EXPECT_EQ(bench.Send("N" + Frame('V')), "") << "given up in between";
  EXPECT_EQ(bench.Send("S" + Frame('V') + Frame('V')), "AA");
}

TEST(Loader, RefusesABrokenHeaderAndIsInStepAfterIt) {
  Bench bench(kLoaderGeneration2);
  ASSERT_EQ(bench.AskAll("a2"), "AA");
  const Bytes block(256, 'S');
  for (std::size_t at = 0; at < 8; ++at) {
    if (at == 6) continue;  // then nobody knows how many bytes follow
    for (const bool resealed : {false, true}) {
      Bytes frame = Frame('P', 0x1200, block);
      frame[at] = ByteOf(ByteValue(frame[at]) + 4);
      if (resealed && (at == 0 || at > 3)) continue;  // another sound header
      if (resealed) frame[7] = ByteOf(ByteValue(frame[7]) - 4);
      bench.Send("S");
      // A changed letter leaves no data to wait for, so the data wake the loader up.
      const Bytes replies = bench.Send(frame);
      EXPECT_EQ(at == 0 ? replies.substr(0, 1) : replies, "N") << at;
      bench.now += 1;
      EXPECT_EQ(bench.Ask('V'), "A") << at;
    }
  }
  EXPECT_EQ(bench.memory.Tables(), Bytes(16384, '\xFF'));
  bench.Send("S");
  EXPECT_EQ(bench.Send(Frame('V', 0, "x")), "N") << "only blocks bring data";
}

TEST(Loader, ForgetsAFrameThatWasCutOff) {
  const Bytes block = CodeLikeBytes(256, 3);
  const Bytes frame = Frame('P', 0x0300, block);
  for (std::size_t cut = 1; cut < frame.size(); ++cut) {
    Bench bench(kLoaderGeneration2);
    bench.Ask('2');
    bench.Send("S");
    EXPECT_EQ(bench.Send(frame.substr(0, cut)), "");
    bench.now += 0.4;
    if (cut % 2 == 0) {
      EXPECT_EQ(bench.Send(frame.substr(cut)), "A") << "a pause is no end";
      EXPECT_EQ(bench.memory.Tables().substr(0x0300, 256), block);
      continue;
    }
    bench.now += 0.2;
    EXPECT_EQ(bench.Ask('V'), "A") << cut;
    EXPECT_EQ(bench.memory.Tables(), Bytes(16384, '\xFF'));
  }
}

TEST(Loader, WritesAndVerifiesTables) {
  const Bytes image = TableImage();
  for (const auto& [model, kind] : {std::pair{kLoaderGeneration2, 'a'}, std::pair{kLoaderGeneration3, 'b'}}) {
    Bench bench(model);
    const Bytes program = bench.memory.Program();
    ASSERT_EQ(bench.Ask(kind), "A");
    ASSERT_EQ(bench.Ask('2'), "A");
    EXPECT_EQ(bench.SendBlocks(image.substr(0, 16384 - 256)), 63U);
    EXPECT_EQ(bench.Ask('W'), "N");
    EXPECT_EQ(bench.Ask('P', 16384 - 256, image.substr(16384 - 256)), "A");
    EXPECT_EQ(bench.AskAll("WLX"), "AAA");
    EXPECT_EQ(bench.memory.Tables(), image);
    EXPECT_EQ(bench.memory.Program(), program);
    EXPECT_FALSE(bench.loader.Running());
  }
}

TEST(Loader, WritesPartOfABlockAndNothingBeyondTheArea) {
  Bench bench(kLoaderGeneration2);
  bench.Ask('2');
  EXPECT_EQ(bench.Ask('P', 16384 - 255, Bytes(255, '\x01')), "A");
  EXPECT_EQ(bench.Ask('P', 16384 - 255, Bytes(256, '\x02')), "N");
  EXPECT_EQ(bench.Ask('P', 0xFFFF, "\x02"), "N");
  EXPECT_EQ(bench.memory.Tables(), Bytes(16384 - 255, '\xFF') + Bytes(255, '\x01'));
}

TEST(Loader, WritesAGeneration2ProgramOnlyWhenPrepared) {
  const Bytes program = SampleProgram(kSmallProgram, "V4.20 22.11.2026", 5);
  Bench bench(kLoaderGeneration2);
  EXPECT_EQ(bench.SendBlocks(program), 0U);
  EXPECT_EQ(bench.AskAll("a0"), "AA");
  EXPECT_EQ(bench.SendBlocks(program), 0U);
  EXPECT_EQ(bench.memory.SoftwareVersion(), kFactoryVersion);
  EXPECT_EQ(bench.AskAll("01"), "AA");
  EXPECT_EQ(bench.SendBlocks(program.substr(0, 0x7F00)), 127U);
  EXPECT_EQ(bench.AskAll("VX"), "NN");
  EXPECT_TRUE(bench.loader.Running());
  bench.now += 3;
  EXPECT_EQ(bench.Ask('P', 0, program.substr(0, 256)), "N") << "nothing is prepared after a pause";
  EXPECT_EQ(bench.AskAll("Va01"), "AAAA") << "the loader runs, and another attempt starts from the beginning";
  EXPECT_EQ(bench.SendBlocks(program + Bytes(256, '\0')), 128U);
  EXPECT_EQ(bench.AskAll("VLX"), "AAA");
  EXPECT_EQ(bench.memory.Program(), program);
  EXPECT_EQ(bench.memory.SoftwareVersion(), "V4.20 22.11.2026");
}

TEST(Loader, WritesAGeneration3ProgramAfterTheKindQuery) {
  const Bytes program = SampleProgram(kLargeProgram, "V5.10 22.11.2026", 6);
  Bench bench(kLoaderGeneration3);
  EXPECT_EQ(bench.SendBlocks(program), 0U);
  EXPECT_EQ(bench.AskAll("2c"), "AA") << "the query forgets the preparation of the tables";
  EXPECT_EQ(bench.SendBlocks(program), 256U);
  EXPECT_EQ(bench.AskAll("VLX"), "AAA");
  EXPECT_EQ(bench.memory.Program(), program);
  EXPECT_EQ(bench.memory.SoftwareVersion(), "V5.10 22.11.2026");
  EXPECT_EQ(bench.memory.Tables(), Bytes(16384, '\xFF'));
}

TEST(DeviceMemory, ChecksTheProgramAsItsGenerationDoes) {
  // Programs of nothing but 0: the sums are what they start at, and the check word does not count itself.
  DeviceMemory small(kSmallProgram, kFactoryVersion);
  small.WriteProgram(0, Bytes(0x7FFE, '\0') + Bytes("\x01\0"sv));
  EXPECT_TRUE(small.ProgramSound());
  DeviceMemory large(kLargeProgram, kFactoryVersion);
  large.WriteProgram(0, Bytes(0xFFFE, '\0') + Bytes("\x02\0"sv));
  EXPECT_TRUE(large.ProgramSound());
  large.WriteProgram(0x1234, "\x05");
  EXPECT_FALSE(large.ProgramSound());
  large.WriteProgram(0xFFFE, "\x07");
  EXPECT_TRUE(large.ProgramSound());
  EXPECT_EQ(large.SoftwareVersion(), kFactoryVersion) << "the program tells none";
  large.WriteProgram(kVersionAddress, "V9");
  EXPECT_EQ(large.SoftwareVersion(), kFactoryVersion) << "nor all of it";
}

}  // namespace
}  // namespace ox::sim
