// The simulated device: its text dialogue, its loader, and the faults that oxsim knows by name;
// in bytes made by hand.
#include "simulator/device/device.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/program/named_faults.h"

namespace ox::sim {
namespace {

/// Sends one text after the other, at the settings that the device has then, and takes what comes before a
/// silence of one second; each reply ends with "|".
Bytes Talk(Device& device, const std::vector<Bytes>& texts, Seconds now = 0) {
  Bytes replies;
  for (const Bytes& text : texts) {
    device.Receive(text, device.Line(), now);
    for (auto next = device.NextOutput(); next && *next < now + 1; next = device.NextOutput()) {
      now = std::max(now, *next);
      replies += device.TakeOutput(now);
    }
    replies += "|";
  }
  return replies;
}

TEST(Device, WakesUpAndAnswersOneRequestColumnByColumn) {
  DeviceOptions options;
  options.stations.parameters = {{"0012", "Pegel    ", "cm "}, {"0340", "Luftdruck", "hPa"}};
  options.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012", "0340"}},
                             {"00000009", "4A6", "Wehr ", 0, 0, {"0012"}}};
  const std::pair<std::vector<Bytes>, Bytes> rows[] = {
      {{"K", "S", "S", "K", "K"}, "|A|A|OX 3 SW 3.20 11/2026 \r||"},
      {{"S", "N", "T", "S"}, "A|||A|"},  // the PC gives up
      {{"SK", "\rS", "A"}, "|A||"},      // a text goes on to its end and is no wake-up
      {{"S", "J4A6               \r"}, "A|\r00000009: 0012      196\rE\r|"},
      {{"S", "J              0340\r"}, "A|\r12345678: 0340   1005.9\rE\r|"},
      // The number alone counts.
      {{"S", "J4A6 12345678:     \r"}, "A|\r12345678: 0012      196\r12345678: 0340   1021.0\rE\r|"},
      {{"S", "Z    12345678: 0012\r"}, "A|012345678: 0012      196 cm \r|"},
      {{"S", "J    12345678: 0999\r"}, "A|R|"},
      {{"S", "Z    12345678:     \r"}, "A|N|"},
      {{"S", "J12  12345678: 0012\r"}, "A|N|"}};
  for (const auto& [texts, replies] : rows) {
    Device device(options);
    EXPECT_EQ(Talk(device, texts), replies);
  }
}

Bytes Frame(char letter, unsigned address = 0, BytesView data = {}) {
  Bytes frame = Bytes(1, letter) + "\x13\x58" + '\0' + ByteOf(address >> 8U) + ByteOf(address) +
                ByteOf(static_cast<unsigned>(data.size()));
  unsigned sum = 0;
  for (const char byte : frame) sum += ByteValue(byte);
  return frame + ByteOf(0U - sum) + Bytes(data);
}

DeviceOptions InLoader(int generation) {
  DeviceOptions options;
  options.generation = generation;
  options.startInLoader = true;
  return options;
}

const Bytes kBlock(256, 'x');

/// The replies to requests from some time on, each behind its own wake-up; "P" writes a block at the address.
Bytes Ask(Device& device, BytesView letters, unsigned address = 0, Seconds now = 0) {
  Bytes replies;
  for (const char letter : letters) {
    const Bytes frame = letter == 'P' ? Frame(letter, address, kBlock) : Frame(letter);
    replies += Talk(device, {"S", frame}, now)[2];
  }
  return replies;
}

TEST(Loader, AnswersTheCatalogueOfItsGeneration) {
  const Bytes catalogues[] = {"NANNNNNNNNNNNNNNNNNAAA", "NANANNNNAANANNANANAAAN", "NANNANAAAANNANNANNAAAN"};
  for (const int generation : {1, 2, 3}) {
    Device device(InLoader(generation));
    EXPECT_EQ(Ask(device, "PVWabPcP2PWaP10P11PVLX"), catalogues[generation - 1]);
  }
}

TEST(Loader, VerifiesACompleteProgramHoweverLongThePauseAndWelcomesANewAttemptAtOnce) {
  for (const Seconds later : {0, 3600}) {
    Device device(InLoader(2));
    EXPECT_EQ(Ask(device, "a01") + Ask(device, "P", 0x7F00) + Ask(device, "VVX", 0, later), "AAAANAN")
        << later;
    EXPECT_EQ(Ask(device, "a01P") + Ask(device, "PVPV", 0, later), "AAAAAANA") << "half a program";
  }
}

TEST(Loader, WantsAWakeUpAndASoundFrameAndWritesNothingElse) {
  Device device(InLoader(2));
  const Bytes erase = Frame('2');
  EXPECT_EQ(Talk(device, {erase, "S", "S", "N" + erase}), "|A|A||") << "a second wake-up begins again";
  EXPECT_EQ(Talk(device, {"S" + erase + erase, "S" + Frame('V', 0, "x")}), "AA|AN|") << "only P has data";
  EXPECT_EQ(Talk(device, {"S" + Frame('V', 256), "S" + Frame('2', 256)}), "AN|AN|") << "or an address";
  Bytes unsound = Frame('P', 0, Bytes(256, 'S'));
  ++unsound[4];
  EXPECT_EQ(Talk(device, {"S" + unsound}), "AN|") << "the data are passed over";
  for (const Bytes& part : {Frame('P', 0, "x"), Frame('P', 1, kBlock), Frame('P', 16384, kBlock)})
    EXPECT_EQ(Talk(device, {"S" + part}), "AN|") << "whole blocks in their places";
  EXPECT_EQ(Ask(device, "P", 16128), "A");
  EXPECT_EQ(device.Memory().Tables(), Bytes(16128, '\xFF') + kBlock);
}

TEST(NamedFaults, DoToADeviceWhatTheyAreCalled) {
  const std::vector<Bytes> update = {"S@UPDATEREQ\r", "S" + Frame('2'), "S" + Frame('P', 0, kBlock),
                                     "S" + Frame('P', 256, kBlock)};
  const struct {
    std::string fault;
    std::vector<Bytes> texts;
    Bytes replies;
    char written = '\xFF';  // in the second block
  } rows[] = {
      {"silent", {"S", "S"}, "||"},
      {"records=2", {"S", "P"}, "A|\r12345678: 0012     41.3\r12345678: 0012     41.7\rE\r|"},
      {"cut-record", {"S", "P"}, "A|\r12345678: 00|"},
      {"slow-2=1001", update, "@UPDATEACK\r|A|||", 'x'},
      // A block that is refused or swallowed is not written; one whose reply alone goes missing is.
      {"block-n=1", update, "@UPDATEACK\r|AA|AA|AN|"},
      {"block-lost=1", update, "@UPDATEACK\r|AA|AA|A|"},
      {"block-silent=1", update, "@UPDATEACK\r|AA|AA|A|", 'x'},
  };
  for (const auto& row : rows) {
    FaultTargets targets;
    targets.device.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012"}}};
    EXPECT_TRUE(SwitchOn(row.fault, targets));
    Device device(targets.device);
    for (const ReplyFault& each : targets.replies) device.Faults().Add(each);
    EXPECT_EQ(Talk(device, row.texts), row.replies) << row.fault;
    EXPECT_EQ(device.Memory().Tables()[256], row.written) << row.fault;
  }
}

}  // namespace
}  // namespace ox::sim
