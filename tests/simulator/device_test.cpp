// The simulated device and the simulated modem: their text dialogues and what they tell.
#include "simulator/device.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "simulator/line_pc.h"
#include "simulator/modem.h"

namespace ox::sim {
namespace {

using namespace std::string_literals;

const Bytes kIdentification = "OX 3 SW 3.20 11/2026 \r|";

TEST(Device, WakesUpTakesOneRequestAndSleeps) {
  Device device({});
  LinePc pc{device};
  EXPECT_EQ(pc.Talk({"K", "S", "S", "K", "N", "K"}), "|A|A|" + kIdentification + "||");
  EXPECT_EQ(pc.Talk({"S", "N", "T"}), "A|||") << "the PC gives up";
  EXPECT_EQ(pc.Talk({"SK", "\rS", "A"}), "|A||")
      << "a text that goes on is no wake-up, and ends with its line";
  EXPECT_EQ(pc.Talk({"S" + Bytes(79, 'x'), "S", "A"}), "|A||") << "or where no request is so long";
  EXPECT_EQ(pc.Talk({"S", "J123"}), "A||");
  pc.now += Dialogue::kPatience;
  EXPECT_EQ(pc.Talk({"\r", "S", "J123"}), "N|A||");
  pc.now += Dialogue::kPatience + 0.01;
  EXPECT_EQ(pc.Talk({"S", "N"}), "A||") << "the request is forgotten";

  device.Receive("S", pc.line, 100);
  EXPECT_DOUBLE_EQ(device.NextOutput().value(), 100 + 20.0 / 9600) << "after a pause of two characters";
  EXPECT_EQ(device.TakeOutput(100 + 19.9 / 9600), "");
  EXPECT_EQ(device.TakeOutput(100 + 20.1 / 9600), "A");
}

TEST(Device, UnderstandsOnlyItsOwnSettings) {
  Device silent({});
  Device noisy({.rubbishWhenUnfit = true});
  for (const LineSettings& line : {LineSettings{9600, 'O', 8}, {9600, 'E', 7}, {4800, 'O', 7}, kLoaderLine}) {
    EXPECT_EQ((LinePc{silent, line}.Talk({"S"})), "|") << line.baud << line.parity;
    EXPECT_EQ((LinePc{noisy, line}.Talk({"S"})).size(), 2U);
  }
}

TEST(Device, AnswersRequestsColumnByColumn) {
  Device device({.stations = {.parameters = {{"0012", "Pegel    ", "cm "}, {"0340", "Luftdruck", "hPa"}},
                              .points = {{"12345678", "123", "Pegel", 0, 0, {"0012", "0340"}},
                                         {"00000009", "4A6", "Wehr ", 0, 0, {"0012"}}}},
                 .clockStart = 951782399});
  LinePc pc{device};
  const std::string stage = "12345678: 0012 [ fs]    [ 0-9]{3}";
  const std::string pressure = "12345678: 0340 [ fs] ( 9[89]|10[0-3])\\d[.]\\d\r";
  const std::string weir = "00000009: 0012 [ fs]    [ 0-9]{3}\r";
  const std::pair<Bytes, std::string> rows[] = {
      {"T", "028.02.00 23:59:59\r"},
      {"P", "\r" + stage + "\r" + pressure + weir + "E\r"},
      {"J4A6               \r", "\r" + weir + "E\r"},
      {"J789               \r", "\rE\r"},
      {"J              0340\r", "\r" + pressure + "E\r"},
      {"J4A6 12345678:     \r", "\r" + stage + "\r" + pressure + "E\r"},  // the number alone counts
      {"J    12345678: 0012\r", "0" + stage + "\r"},
      {"Z    12345678: 0012\r", "0" + stage + " cm \r"},
      {"J    12345678: 0999\r", "R"},
      {"Z    99999999: 0012\r", "R"}};
  for (const auto& [request, pattern] : rows) {
    const Bytes reply = pc.Talk({"S", request});
    EXPECT_TRUE(std::regex_match(reply, std::regex("A[|]" + pattern + "[|]"))) << request << "\n" << reply;
  }
  for (const Bytes& request : {"Z    12345678:     \r"s, "J12  12345678: 0012\r"s, "J    1234567x: 0012\r"s,
                               "J\r"s, "Q\r"s, ">SS"s, Bytes(80, 'x')}) {
    EXPECT_EQ(pc.Talk({"S", request}), "A|N|") << request;
  }
  const std::pair<Bytes, Bytes> presets[] = {{"\xFF", "00317"},
                                             {"\0"s, "00000"},
                                             {"\r", "00082"},
                                             {"S", "0033E"},
                                             {"d", "003E8"}};  // none, 0, 13, 83 and 100 percent
  for (const auto& [preset, charge] : presets)
    EXPECT_EQ(pc.Talk({"S", ">" + preset + "\r"}).substr(2, 5), charge);
  pc.now = 2;
  EXPECT_EQ(pc.Talk({"S", "T"}), "A|029.02.00 00:00:01\r|");
  device.Receive("S", pc.line, pc.now);
  device.Receive("P", pc.line, pc.now + 1);
  EXPECT_EQ(device.TakeSome(pc.now + 2, 6), "A\r1234");
  EXPECT_EQ(pc.Talk({"S", "N"}), "A||") << "a new dialogue cuts an old reply off";
  Device older({.generation = 2, .type = "ZX", .version = "1.0"});
  EXPECT_EQ((LinePc{older}.Talk({"S", "K", "S", ">\xFF\r"})), "A|ZX   1.0             \r|A|N|");
}

TEST(Device, ItsBatteryRunsThroughAllStatesInAQuarterOfAnHour) {
  PowerSupply supply;
  std::set<int> states;
  for (int second = 0; second <= 900; ++second) {
    supply.Advance(second);
    states.insert(supply.Status().state);
    EXPECT_EQ(supply.Status().mainsVoltage == 0, supply.Status().state == 1) << second;
  }
  EXPECT_EQ(states, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(Device, ItsLoaderTakesOverAtItsOwnSettingsUntilARestart) {
  Device device({});
  device.Faults().Add({.which = {ReplyStage::UpdateAcknowledgement}, .requestLost = true});
  LinePc pc{device};
  EXPECT_EQ(pc.Talk({"S@UPDATEREQ\r", "S", "K"}), "|A|" + kIdentification) << "the request was lost";
  EXPECT_EQ(pc.Talk({"S@UPDATEREQ\r", "S"}), "@UPDATEACK\r||");
  EXPECT_EQ((LinePc{device, kLoaderLine}.Talk({"S", "X\x13\x58\0\0\0\0\x3D"s, "S"})), "A|A||");
  EXPECT_EQ(pc.Talk({"S", "K"}), "A|" + kIdentification);
}

TEST(SimulatedModem, TakesSoundRecordsAndSendsThemOnOrder) {
  const Bytes office = "*123 161106 1430\r";
  const Bytes value = "#12345678: 0012 s  12.3 \r";
  const Bytes missing = "#12345678: 0012   -#### \r";
  SimulatedModem modem({.burstPeriod = 100});
  LinePc pc{modem};
  EXPECT_EQ(pc.Talk({"S", office, "S", value, "S", missing, office}), "A|A|A|A|A|A||");
  EXPECT_EQ(pc.Talk({"S", "*123 161106 143\r", "S", "\r", "S", Bytes(80, '#')}), "A|NR|A|NR|A|NR|");
  EXPECT_EQ(pc.Talk({"S", "#12345678: 0012 s  12.3\r", "S", "#12345678: 0012 s +12.3 \r"}), "A|NR|A|NR|");
  EXPECT_EQ(pc.Talk({"S", "N", office}), "A|||") << "the PC gives up";
  EXPECT_EQ((LinePc{modem, {9600, 'E', 7}}.Talk({"S"})), "|");
  modem.DropModemLine(pc.now);
  const Bytes burst = "CONNECT\r" + office + value + missing + "NO CARRIER\r";
  EXPECT_EQ(pc.Talk({""}), burst + "|");
  EXPECT_EQ(modem.NextOutput(), 100);
  EXPECT_EQ(modem.TakeOutput(99) + modem.TakeOutput(100) + modem.TakeOutput(102), burst);
  EXPECT_EQ(modem.NextOutput(), 200);
}

}  // namespace
}  // namespace ox::sim
