// The simulated device and the simulated modem: their text dialogues and what they tell.
#include "simulator/device.h"

#include <gtest/gtest.h>

#include <regex>

#include "simulator/line_pc.h"
#include "simulator/modem.h"

namespace ox::sim {
namespace {

using namespace std::string_literals;

TEST(Device, WakesUpTakesOneRequestAndSleeps) {
  Device device({});
  LinePc pc{device};
  EXPECT_EQ(pc.Talk({"K", "S", "S", "K", "N", "K"}), "|A|A|OX 3 SW 3.20 11/2026 \r|||");
  EXPECT_EQ(pc.Talk({"S", "N", "T"}), "A|||") << "the PC gives up";
  EXPECT_EQ(pc.Talk({"SK", "\rS", "A"}), "|A||") << "a text goes on to its end and is no wake-up";
  for (const LineSettings& line : {LineSettings{9600, 'O', 8}, {9600, 'E', 7}, {4800, 'O', 7}, kLoaderLine}) {
    EXPECT_EQ((LinePc{device, line}.Talk({"S"})), "|") << line.baud << line.parity << line.dataBits;
  }
}

TEST(Device, AnswersRequestsColumnByColumn) {
  DeviceOptions options;
  options.stations.parameters = {{"0012", "Pegel    ", "cm "}, {"0340", "Luftdruck", "hPa"}};
  options.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012", "0340"}},
                             {"00000009", "4A6", "Wehr ", 0, 0, {"0012"}}};
  Device device(options);
  LinePc pc{device};
  const std::string stage = "12345678: 0012 [ fs]    [ 0-9]{3}";
  const std::string pressure = "12345678: 0340 [ fs] ( 9[89]|10[0-3])\\d[.]\\d\r";
  const std::pair<Bytes, std::string> rows[] = {
      {"P", "\r" + stage + "\r" + pressure + "00000009: 0012.{9}\rE\r"},
      {"J4A6               \r", "\r00000009: 0012.{9}\rE\r"},
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
  EXPECT_EQ(pc.Talk({"S", ">\r\r"}).substr(2, 5), "00082") << "a preset of 13 percent, and no end of line";
}

TEST(SimulatedModem, TakesSoundRecordsAndSendsThemOnOrder) {
  const Bytes office = "*123 161106 1430\r";
  const Bytes value = "#12345678: 0012 s  12.3 \r";
  SimulatedModem modem({});
  LinePc pc{modem};
  EXPECT_EQ(pc.Talk({"S", office, "S", value, office}), "A|A|A|A||");
  EXPECT_EQ(pc.Talk({"S", "*123 161106 143\r", "S", "\r", "S", Bytes(80, '#')}), "A|NR|A|NR|A|NR|");
  EXPECT_EQ(pc.Talk({"S", "#12345678: 0012 s  12.3\r", "S", "#12345678: 0012 s +12.3 \r"}), "A|NR|A|NR|");
  modem.DropModemLine(pc.now);
  EXPECT_EQ(pc.Talk({""}), "CONNECT\r" + office + value + "NO CARRIER\r|");
}

}  // namespace
}  // namespace ox::sim
