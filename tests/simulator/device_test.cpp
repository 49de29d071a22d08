// The simulated device: its line, its text dialogue and its faults there.
#include "simulator/device.h"

#include <gtest/gtest.h>

#include "simulator/line_pc.h"

namespace ox::sim {
namespace {

constexpr BytesView kUpdateRequest = "S@UPDATEREQ\r";
constexpr BytesView kUpdateAcknowledgement = "@UPDATEACK\r";

StationData TwoOffices() {
  StationData stations;
  stations.parameters = {{"0012", "Pegel    ", "cm "}, {"0340", "Wasser   ", "^C "}};
  stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012", "0340"}},
                     {"00000009", "456", "Wehr ", 0, 0, {"0012"}}};
  return stations;
}

DeviceOptions WithStations() {
  DeviceOptions options;
  options.stations = TwoOffices();
  return options;
}

ReplySelection Every(ReplyStage stage) {
  return {stage, std::nullopt, 0, 1000};
}

TEST(DeviceDialogue, IdentifiesItselfAndTakesWhatFollowsSilently) {
  Device device({});
  LinePc pc(device);
  EXPECT_EQ(pc.Dialogue("K"), "OX 3 SW 3.20 11/2026 \r");
  EXPECT_EQ(pc.Ask("N"), "");
  EXPECT_EQ(pc.Ask("K"), "") << "asleep again";
  DeviceOptions options;
  options.generation = 1;
  options.version = "1.0";
  Device first(options);
  EXPECT_EQ(LinePc(first).Dialogue("K"), "OX 1 1.0             \r");
  options.type = "ZX";
  Device other(options);
  EXPECT_EQ(LinePc(other).Dialogue("K"), "ZX   1.0             \r");
}

TEST(DeviceDialogue, AnswersTheWakeUpOnlyAfterAPause) {
  Device device({});
  LinePc pc(device);
  pc.Send("S");
  ASSERT_TRUE(device.NextOutput().has_value());
  EXPECT_DOUBLE_EQ(*device.NextOutput(), 20.0 / 9600);
  EXPECT_EQ(device.TakeOutput(19.0 / 9600), "");
  EXPECT_EQ(device.TakeOutput(21.0 / 9600), "A");

  pc.Send("K");
  pc.Ask("A");
  pc.Send("S");
  EXPECT_EQ(pc.Ask("K"), "") << "a text that goes on is no wake-up";
  pc.Ask("\r");
  EXPECT_EQ(pc.Ask("S"), "A") << "and ends with its line";
  EXPECT_EQ(pc.Ask("S"), "A") << "a second wake-up begins again";
  EXPECT_EQ(pc.Ask("N"), "");
  EXPECT_EQ(pc.Ask("T"), "") << "the PC has given up";
}

TEST(DeviceDialogue, ForgetsARequestThatDoesNotCome) {
  Device device({});
  LinePc pc(device);
  EXPECT_EQ(pc.Ask("S"), "A");
  EXPECT_EQ(pc.Ask("J123"), "");
  pc.Pass(Dialogue::kPatience + 1);
  EXPECT_EQ(pc.Ask("S"), "A");
}

TEST(DeviceDialogue, UnderstandsOnlyItsOwnSettings) {
  struct Case {
    LineSettings pc;
    bool understood = false;
  };
  const Case cases[] = {
      {{9600, 'O', 7}, true},  {{9600, 'O', LineSettings::kUnknownBits}, true}, {{9600, 'O', 8}, false},
      {{9600, 'E', 7}, false}, {{9600, LineSettings::kNotOdd, 7}, false},       {{4800, 'O', 7}, false},
      {kLoaderLine, false},
  };
  for (const Case& row : cases) {
    Device device({});
    EXPECT_EQ(LinePc(device, row.pc).Ask("S"), row.understood ? "A" : "") << row.pc.baud << row.pc.parity;
    DeviceOptions options;
    options.rubbishWhenUnfit = true;
    Device noisy(options);
    EXPECT_EQ(LinePc(noisy, row.pc).Ask("S").size(), 1U);
  }
  EXPECT_TRUE(Fits({19200, LineSettings::kNotOdd, 0}, kLoaderLine)) << "a pseudo-terminal hides the rest";
}

TEST(DeviceDialogue, AnswersPollsFromItsStations) {
  Device device(WithStations());
  LinePc pc(device);
  struct Case {
    Bytes request;
    size_t records;
    Bytes first;
  };
  const Case several[] = {
      {"P", 3, "12345678: 0012 "},
      {"J123               \r", 2, "12345678: 0012 "},
      {"J456               \r", 1, "00000009: 0012 "},
      {"J789               \r", 0, ""},
      {"J              0340\r", 1, "12345678: 0340 "},
      {"J456 12345678:     \r", 2, "12345678: 0012 "},  // with a number the office does not count
  };
  for (const Case& row : several) {
    const Bytes reply = pc.Dialogue(row.request);
    EXPECT_EQ(reply.size(), 1 + row.records * 24 + 2) << row.request;
    EXPECT_EQ(reply.substr(0, 1 + row.first.size()), "\r" + row.first);
    EXPECT_TRUE(reply.ends_with("E\r"));
  }
  const Bytes single = pc.Dialogue("J    12345678: 0012\r");
  EXPECT_EQ(single.size(), 25U);
  EXPECT_EQ(single.substr(0, 16), "012345678: 0012 ");
  EXPECT_EQ(single.back(), '\r');
  const Bytes longer = pc.Dialogue("Z    12345678: 0340\r");
  EXPECT_EQ(longer.substr(0, 16), "012345678: 0340 ");
  EXPECT_GT(longer.size(), 25U);
}

TEST(DeviceDialogue, RefusesWhatItCannotAnswer) {
  Device device(WithStations());
  LinePc pc(device);
  const std::pair<Bytes, Bytes> cases[] = {
      {"J    12345678: 0999\r", "R"},
      {"Z    99999999: 0012\r", "R"},
      {"Z    12345678:     \r", "N"},
      {"J12  12345678: 0012\r", "N"},
      {"J    1234567x: 0012\r", "N"},
      {"J\r", "N"},
      {"Q\r", "N"},
      {Bytes(80, 'x'), "N"},
  };
  for (const auto& [request, answer] : cases) EXPECT_EQ(pc.Dialogue(request), answer) << request;
}

TEST(DeviceDialogue, TellsItsTime) {
  DeviceOptions options;
  options.clockStart = 951782399;  // 28.02.2000 23:59:59
  Device device(options);
  LinePc pc(device);
  EXPECT_EQ(pc.Dialogue("T"), "028.02.00 23:59:59\r");
  pc.Pass(2);
  EXPECT_EQ(pc.Dialogue("T"), "029.02.00 00:00:01\r");
}

TEST(DeviceDialogue, ANewDialogueCutsAnOldReplyOff) {
  Device device(WithStations());
  LinePc pc(device);
  pc.Ask("S");
  pc.Send("P");
  pc.Pass(1);
  EXPECT_EQ(device.TakeSome(pc.Now(), 5), "\r1234");
  EXPECT_EQ(pc.Ask("S"), "A");
}

TEST(DeviceFaults, SpoilChosenRepliesOfTheDialogue) {
  struct Case {
    ReplyFault fault;
    Bytes request;
    Bytes answer;
  };
  const Case cases[] = {
      {{Every(ReplyStage::DialogueWakeUp), ReplyFault::Kind::Silence}, "K", "-"},
      {{Every(ReplyStage::DialogueWakeUp), ReplyFault::Kind::Replaced, "X"}, "K", "-X"},
      {{Every(ReplyStage::DialogueWakeUp), ReplyFault::Kind::Late, "", 1.5}, "K", "-"},
      {{{ReplyStage::DialogueReply, 'K'}, ReplyFault::Kind::Replaced, "N"}, "K", "N"},
      {{{ReplyStage::DialogueReply, 'P', 1}, ReplyFault::Kind::Silence}, "P", "\rE\r"},
      {{Every(ReplyStage::DialogueReply), ReplyFault::Kind::Split, "", 0.1}, "K", "OX 3 SW 3.20 11/2026 \r"},
  };
  for (const Case& row : cases) {
    DeviceOptions options = WithStations();
    options.stations.points.resize(1);
    options.stations.points[0].parameters.resize(1);
    Device device(options);
    device.Faults().Add(row.fault);
    EXPECT_EQ(LinePc(device).Dialogue(row.request), row.answer);
  }
}

TEST(DeviceFaults, ShapePollReplies) {
  const auto collective = [](const ReplyShape& shape) {
    DeviceOptions options = WithStations();
    options.replies = shape;
    Device device(options);
    return LinePc(device).Dialogue("P");
  };
  EXPECT_EQ(collective({1000, {}, {}, false}).size(), 1 + 1002 * 24 + 2U) << "whole rounds of three";
  EXPECT_EQ(collective({0, 2, {}, false}).size(), 1 + 2 * 24U);
  EXPECT_EQ(collective({0, {}, {}, true}).size(), 1 + 2 * 24 + 12U);
  EXPECT_EQ(collective({0, 0, {}, true}), "\r");
  DeviceOptions options = WithStations();
  options.replies.cutRecord = true;
  Device device(options);
  LinePc pc(device);
  EXPECT_EQ(pc.Dialogue("J    12345678: 0012\r"), "012345678: 00");
  EXPECT_EQ(pc.Dialogue("J    12345678: 0999\r"), "R");
}

TEST(DeviceLoader, TakesOverAtItsOwnSettings) {
  Device device({});
  LinePc pc(device);
  pc.Send(kUpdateRequest);
  EXPECT_TRUE(device.LoaderRunning());
  EXPECT_EQ(device.Line(), kLoaderLine);
  EXPECT_EQ(pc.Ask("S"), kUpdateAcknowledgement) << "and nothing at the old settings";
  pc.Set(kLoaderLine);
  EXPECT_EQ(pc.Ask("S"), "A");
  const Bytes leave("X\x13\x58\0\0\0\0\x3D", 8);
  EXPECT_EQ(pc.Ask(leave), "A");
  EXPECT_FALSE(device.LoaderRunning());
  EXPECT_EQ(pc.Ask("S"), "");
  pc.Set({9600, 'O', 7});
  EXPECT_EQ(pc.Dialogue("K").size(), 22U);
}

TEST(DeviceLoader, ARequestLostOnTheWayChangesNothing) {
  Device device({});
  device.Faults().Add({{ReplyStage::UpdateAcknowledgement}, ReplyFault::Kind::Silence, "", 0, true});
  LinePc pc(device);
  EXPECT_EQ(pc.Ask(kUpdateRequest), "");
  EXPECT_FALSE(device.LoaderRunning());
  EXPECT_EQ(pc.Ask(kUpdateRequest), kUpdateAcknowledgement);
}

TEST(DeviceLoader, RunsFromTheStartWhenSwitchedOnThatWay) {
  DeviceOptions options;
  options.startInLoader = true;
  Device device(options);
  EXPECT_EQ(LinePc(device).Ask("S"), "");
  EXPECT_EQ(LinePc(device, kLoaderLine).Ask("S"), "A");
  device.Restart();
  EXPECT_EQ(LinePc(device).Dialogue("K").size(), 22U) << "its program is sound";
}

TEST(DevicePower, TellsItsStatusAndObeysThePreset) {
  Device device({});
  LinePc pc(device);
  const Bytes status = pc.Dialogue(">\xFF\r");
  ASSERT_EQ(status.size(), 26U);
  EXPECT_EQ(status.substr(0, 5), "00317");
  for (const int percent : {0, 13, 50, 83, 100}) {  // among them CR and "S"
    const Bytes reply = pc.Dialogue(Bytes(">") + ByteOf(static_cast<unsigned>(percent)) + "\r");
    EXPECT_EQ(std::stoi(reply.substr(1, 4), nullptr, 16), percent * 10);
  }
  DeviceOptions options;
  options.generation = 2;
  Device older(options);
  EXPECT_EQ(LinePc(older).Dialogue(">\xFF\r"), "N");
}

}  // namespace
}  // namespace ox::sim
