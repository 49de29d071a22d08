// Faults that spoil the device's replies, alone and in the loader.
#include "simulator/reply_faults.h"

#include <gtest/gtest.h>

#include "simulator/loader.h"

namespace ox::sim {
namespace {

using Kind = ReplyFault::Kind;

constexpr ReplyOrigin kBlock{ReplyStage::LoaderReply, 'P'};
constexpr ReplyOrigin kWake{ReplyStage::LoaderWakeUp, '\0'};

// "due:bytes" for each piece.
std::string Told(const std::vector<TimedReply>& replies) {
  std::string text;
  for (const auto& reply : replies)
    text += std::to_string(static_cast<int>(reply.due)) + ":" + reply.bytes + " ";
  return text;
}

TEST(ReplyFaults, SpoilsAReply) {
  const struct {
    ReplyFault fault;
    const char* told = "";
  } rows[] = {{{.which = {.nth = 9}}, "10:ACK "},
              {{.kind = Kind::Silence}, ""},
              {{.kind = Kind::Replaced, .text = "N"}, "10:N "},
              {{.kind = Kind::Doubled}, "10:ACKACK "},
              {{.kind = Kind::NoiseBefore, .text = "~"}, "10:~ACK "},
              {{.kind = Kind::NoiseBefore, .text = "~", .delay = 1}, "10:~ 11:ACK "},
              {{.kind = Kind::LastCharacterLost}, "10:AC "},
              {{.kind = Kind::Late, .delay = 5}, "15:ACK "},
              {{.kind = Kind::Split, .delay = 2}, "10:A 12:C 14:K "}};
  for (const auto& row : rows) {
    ReplyFaults faults;
    faults.Add(row.fault);
    EXPECT_EQ(Told(faults.Apply(kBlock, "ACK", 10)), row.told);
    EXPECT_EQ(Told(faults.Apply(kBlock, "ACK", 10)), "10:ACK ") << "only once";
  }
}

TEST(ReplyFaults, StrikesTheChosenReplies) {
  const auto struck = [](const ReplySelection& which) {
    ReplyFaults faults;
    faults.Add({.which = which});
    std::string numbers;
    for (int i = 0; i < 8; ++i) {  // wake-up and block in turn
      if (faults.Next(i % 2 == 0 ? kWake : kBlock)) numbers += std::to_string(i);
    }
    return numbers;
  };
  EXPECT_EQ(struck({.nth = 3}), "3");
  EXPECT_EQ(struck({.nth = 6, .times = 5}), "67");
  EXPECT_EQ(struck({.stage = ReplyStage::LoaderWakeUp, .nth = 1, .times = 2}), "24");
  EXPECT_EQ(struck({.letter = 'P', .nth = 2}), "5");
  EXPECT_EQ(struck({.letter = 'W'}), "");
}

TEST(ReplyFaults, TellsTheObserverAndCountsFromWhenTheFaultWasAdded) {
  ReplyFaults faults;
  std::string seen;
  faults.Observe([&](const ReplyOrigin& origin) {
    seen += origin.stage == ReplyStage::LoaderWakeUp ? 'w' : origin.letter;
  });
  EXPECT_FALSE(faults.Next(kWake));
  faults.Add({.kind = Kind::Doubled});
  faults.Add({.kind = Kind::Silence});
  EXPECT_EQ(faults.Next(kBlock)->kind, Kind::Doubled) << "the first added counts";
  faults.Add({});
  faults.Clear();
  EXPECT_FALSE(faults.Next(kWake));
  EXPECT_EQ(seen, "wPw");
}

// A block that is refused or swallowed is not written; one whose reply goes missing is.
TEST(ReplyFaults, LoseTheRequestToo) {
  const Bytes request = Bytes("S\x50\x13\x58\x00\x00\x00\x01\x44", 9) + "x";
  for (const bool lost : {false, true}) {
    DeviceMemory memory(kSmallProgram, "");
    ReplyFaults faults;
    Loader loader(kLoaderGeneration2, memory, faults);
    loader.Start();
    loader.Receive(Bytes("S\x32\x13\x58\x00\x00\x00\x00\x63", 9), 0);
    faults.Add({.which = {.letter = 'P'}, .requestLost = lost});
    EXPECT_EQ(Told(loader.Receive(request, 1)), "1:A ");
    EXPECT_EQ(memory.Tables()[0], lost ? '\xFF' : 'x');
    EXPECT_EQ(Told(loader.Receive(request, 2)), "2:A 2:A ");
    EXPECT_EQ(memory.Tables()[0], 'x');
    faults.Add({.which = {.stage = ReplyStage::LoaderWakeUp}, .requestLost = lost});
    EXPECT_EQ(Told(loader.Receive(request, 3)), lost ? "" : "3:A ") << "without wake-up no frame is taken";
  }
}

}  // namespace
}  // namespace ox::sim
