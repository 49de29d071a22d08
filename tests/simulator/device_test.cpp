// The simulated device in bytes made by hand: its text dialogue, its loader, its faults by their names.
#include "simulator/device/device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "simulator/device/modem.h"
#include "simulator/device/table_checksum.h"
#include "simulator/program/named_faults.h"
#include "tables/table_images.h"
#include "tables/table_rig.h"

namespace ox::sim {
namespace {

/// Sends one text after the other, at the settings that the end has then or at others, and takes what comes
/// before a silence of one second; an empty text lets a second pass. Each reply ends with "|"; "~" stands for
/// a pause that lasts longer than 0.1 s.
Bytes Talk(Endpoint& end, const std::vector<Bytes>& texts, Seconds now = 0,
           std::optional<LineSettings> pc = {}) {
  Bytes replies;
  for (const Bytes& text : texts) {
    if (text.empty()) ++now;
    end.Receive(text, pc.value_or(end.Line()), now);
    for (auto next = end.NextOutput(); next && *next < now + 1; next = end.NextOutput()) {
      if (*next > now + 0.1) replies += "~";
      now = std::max(now, *next);
      replies += end.TakeOutput(now);
    }
    replies += "|";
  }
  return replies;
}

Bytes Tables() {
  const Bytes points =
      "1__Amt_123_" + Point("12345678", "00120340") + "__Tal_4A6_" + Point("00000009", "0012");
  return BuildTableImages(Packed(points + "___"), Packed("0012 Pegel     cm _0340 Luftdruck hPa___"))
      .older.bytes;
}

TEST(Device, WakesUpAndAnswersOneRequestColumnByColumn) {
  const DeviceOptions options{.generation = 2, .tables = Tables()};
  const std::pair<std::vector<Bytes>, Bytes> rows[] = {
      {{"K", "S", "S", "K", "K"}, "|A|A|OX 2 SW 3.20 11/2026 \r||"},
      {{"S", "N", "T", "S"}, "A|||A|"},  // the PC gives up
      {{"SK", "\rS", "A"}, "|A||"},      // a text goes on to its end and is no wake-up
      {{"Sx", "", "S"}, "||A|"},         // or to a pause
      {{"S", "J1", "", "S"}, "A|||A|"},
      {{"S", "J4A6               \r"}, "A|\r00000009: 0012      196\rE\r|"},
      {{"S", "J              0340\r"}, "A|\r12345678: 0340   1005.9\rE\r|"},
      // The number alone counts.
      {{"S", "J4A6 12345678:     \r"}, "A|\r12345678: 0012      196\r12345678: 0340   1021.0\rE\r|"},
      {{"S", "Z    12345678: 0012\r"}, "A|012345678: 0012      196 cm \r|"},
      {{"S", "J    12345678: 0999\r"}, "A|R|"},
  };
  for (const auto& [texts, replies] : rows) {
    Device device(options);
    EXPECT_EQ(Talk(device, texts), replies);
  }
  for (const char* unsound :
       {"Z    12345678:     ", "J12  12345678: 0012", "J4 6           0012", "J123:          0012",
        "J    12345678; 0012", "Z    12345678:x0012", "J            : 0012", "J                  "}) {
    Device device(options);
    EXPECT_EQ(Talk(device, {"S", unsound + Bytes("\r")}), "A|N|") << unsound;
  }
}

TEST(Modem, IsReadyAgainAfterARecordWithoutEnd) {
  SimulatedModem modem({});
  EXPECT_EQ(Talk(modem, {"S", "*12", "", "S", "*123 161106 1430\r"}), "A|||A|A|");
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
  const Bytes awake = "A|";
  for (const char letter : letters) {
    const Bytes frame = letter == 'P' ? Frame(letter, address, kBlock) : Frame(letter);
    replies += Talk(device, {"S", frame}, now).at(awake.size());
  }
  return replies;
}

TEST(Device, AnswersFromItsTableMemoryWhileThatIsSound) {
  Device device({.generation = 2, .tables = Tables()});
  const Bytes polled = Talk(device, {"S", "P"});
  const Bytes foreign = Bytes(kTableChecksumAt, '\xFF') + "\x04\xBE";
  // Images, how much of each is written, and whether polls are answered then.
  const std::tuple<Bytes, unsigned, bool> rows[] = {
      {Tables(), 0, false}, {Tables(), 16128, false}, {foreign, 16384, false}, {Tables(), 16384, true}};
  for (const auto& [image, size, sound] : rows) {
    Talk(device, {"S@UPDATEREQ\r", "S" + Frame('2')});
    for (unsigned at = 0; at < size; at += 256) Talk(device, {"S" + Frame('P', at, image.substr(at, 256))});
    EXPECT_EQ(Ask(device, "X"), "A");
    EXPECT_EQ(Talk(device, {"S", "P"}).size(), sound ? polled.size() : Bytes("A|\rE\r|").size()) << size;
  }
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
    Bytes told = Ask(device, "a01");
    told += Ask(device, "P", 0x7F00);
    told += Ask(device, "VVX", 0, later);
    EXPECT_EQ(told, "AAAANAN") << later;
    told = Ask(device, "a01P");
    told += Ask(device, "PVPV", 0, later);
    EXPECT_EQ(told, "AAAAAANA") << "half a program";
  }
}

TEST(Loader, WantsAWakeUpAndASoundFrameAndWritesNothingElse) {
  Device device(InLoader(2));
  const Bytes erase = Frame('2');
  EXPECT_EQ(Talk(device, {erase, "S", "S", "N" + erase}), "|A|A||") << "a second wake-up begins again";
  EXPECT_EQ(Talk(device, {"S" + erase + erase, "S" + Frame('V', 0, "x")}), "AA|AN|") << "only P has data";
  EXPECT_EQ(Talk(device, {"S" + Frame('V', 256), "S" + Frame('2', 256)}), "AN|AN|") << "or an address";
  Bytes unsound = Frame('P', 0, Bytes(256, 'S'));
  constexpr std::size_t kAddress = 4;  // in a frame's head
  ++unsound[kAddress];
  EXPECT_EQ(Talk(device, {"S" + unsound}), "AN|") << "the data are passed over";
  for (const Bytes& part : {Frame('P', 0, "x"), Frame('P', 1, kBlock), Frame('P', 16384, kBlock)})
    EXPECT_EQ(Talk(device, {"S" + part}), "AN|") << "whole blocks in their places";
  EXPECT_EQ(Ask(device, "P", 16128), "A");
  EXPECT_EQ(device.Memory().Tables(), Bytes(16128, '\xFF') + kBlock);
}

TEST(NamedFaults, DoToADeviceWhatTheyAreCalled) {
  const std::vector<Bytes> poll = {"S", "P"};
  const std::vector<Bytes> pollOne = {"S", "J4A6               \r"};
  const std::vector<Bytes> identify = {"S", "K"};
  const std::vector<Bytes> askPower = {"S", ">\x7F\r"};
  const Bytes intoLoader = "S@UPDATEREQ\r";
  const std::vector<Bytes> update = {intoLoader, "S" + Frame('2'), "S" + Frame('P', 0, kBlock),
                                     "S" + Frame('P', 256, kBlock)};
  const std::vector<Bytes> record = {"S", "*123 161106 1430\r"};
  const Bytes twoRecords = "12345678: 0012      196\r12345678: 0340   1021.0\r";
  const Bytes third = "00000009: 0012       35\r";
  const struct {
    std::string fault;
    std::vector<Bytes> texts;
    Bytes replies;
    char written = '\xFF';  // in the second block
    int generation = 2;
    bool inLoader = false;
  } rows[] = {
      {"silent", {"S", "P", "S@UPDATEREQ\r", "S"}, "||||"},
      {"silent", {"S" + Frame('V')}, "|", '\xFF', 2, true},
      {"sleepy", {"S", "S"}, "|A|"},
      {"wakeup", {"S"}, "X|"},
      {"rubbish", {"SS"}, "%|"},
      {"late=500", identify, "~A|~OX 2 SW 3.20 11/2026 \r|"},
      {"split=200", pollOne, "A|\r~0~0~0~0~0~0~0~9~:~ ~0~0~1~2~ ~ ~ ~ ~ ~ ~1~9~6~\r~E~\r|"},
      {"ident-short", identify, "A|OX 2 SW 3.20 11/2026\r|"},
      {"ident-n", identify, "A|N|"},
      {"type", identify, "A|ZX 9 SW 3.20 11/2026 \r|"},
      {"poll-r", poll, "A|R|"},
      {"poll-n", poll, "A|N|"},
      {"n-line", pollOne, "A|N\r00000009: 0012      196\rE\r|"},
      {"flag=T", pollOne, "A|\r00000009: 0012 T    196\rE\r|"},
      {"switch-off=2", {"S", "K", "S"}, "A|||"},
      {"cut-record", poll, "A|\r" + twoRecords + "00000009: 00|"},
      {"silence-after=2", poll, "A|\r" + twoRecords + "|"},
      {"r-after=2", poll, "A|\r" + twoRecords + "R|"},
      {"records=4", poll,
       "A|\r" + twoRecords + third + "12345678: 0012      194\r12345678: 0340   1020.7\r" + third + "E\r|"},
      {"power-short", askPower, "A|N|"},
      {"power-short", askPower, "A|007D003B63039\r|", '\xFF', 3},
      {"power-state", askPower, "A|007D003B6303903520017000B\r|", '\xFF', 3},
      {"power-negative", askPower, "A|0FFF9FC18FFFFCFC7005A0001\r|", '\xFF', 3},
      {"ack", {intoLoader}, "@UPDATENAK\r|"},
      {"ack-no-cr", {intoLoader}, "@UPDATEACK|"},
      {"slow-2=1001", update, "@UPDATEACK\r|A|||", 'x'},
      // A block that is refused or swallowed is not written; one whose reply alone goes missing is.
      {"block-n=1", update, "@UPDATEACK\r|AA|AA|AN|"},
      {"block-lost=1", update, "@UPDATEACK\r|AA|AA|A|"},
      {"block-silent=1", update, "@UPDATEACK\r|AA|AA|A|", 'x'},
      {"block-aa=1", update, "@UPDATEACK\r|AA|AA|AAA|", 'x'},
      {"block-noise=1", update, "@UPDATEACK\r|AA|AA|A\177A|", 'x'},
      {"modem", record, "A|NR|"},
      {"modem-silent", record, "A||"},
      {"modem-burst=2", {"", ""}, "|~CONNECT\r~NO CARRIER\r|"},
      {"unplug", {}, ""},
  };
  std::string tried;
  for (const auto& row : rows) {
    FaultTargets targets;
    targets.device.generation = row.generation;
    targets.device.tables = Tables();
    targets.device.startInLoader = row.inLoader;
    EXPECT_TRUE(SwitchOn(row.fault, targets));
    Device device(targets.device);
    for (const ReplyFault& each : targets.replies) device.Faults().Add(each);
    SimulatedModem modem(targets.modem);
    Endpoint& end = row.fault.starts_with("modem") ? static_cast<Endpoint&>(modem) : device;
    const auto pc = row.fault == "rubbish" ? std::optional(kLoaderLine) : std::nullopt;
    EXPECT_EQ(Talk(end, row.texts, 0, pc), row.replies) << row.fault;
    EXPECT_EQ(device.Memory().Tables()[256], row.written) << row.fault;
    EXPECT_EQ(targets.host.unplugAfter.has_value(), row.fault == "unplug");
    tried += "    " + row.fault.substr(0, row.fault.find('=')) + "=";
  }
  std::istringstream help(FaultHelp());
  for (std::string line; std::getline(help, line);)
    EXPECT_NE(tried.find(line.substr(0, line.find_first_of("= ", 4)) + "="), std::string::npos) << line;
}

}  // namespace
}  // namespace ox::sim
