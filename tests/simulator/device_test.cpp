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
  EXPECT_EQ(pc.Talk({"S" + Bytes(79, 'x'), "S", "A"}), "|A||") << "or where no request is so long";
  EXPECT_EQ(pc.Talk({"S", "J123"}), "A||");
  pc.now += Dialogue::kPatience;
  EXPECT_EQ(pc.Talk({"\r", "S", "J123"}), "N|A||");
  pc.now += Dialogue::kPatience + 0.01;
  EXPECT_EQ(pc.Talk({"S", "N"}), "A||") << "the request is forgotten";

  for (const LineSettings& line : {LineSettings{9600, 'O', 8}, {9600, 'E', 7}, {4800, 'O', 7}, kLoaderLine}) {
    EXPECT_EQ((LinePc{device, line}.Talk({"S"})), "|") << line.baud << line.parity << line.dataBits;
  }
  DeviceOptions options;
  options.rubbishWhenUnfit = true;
  options.replies.leastRecords = 1000;
  Device noisy(options);
  EXPECT_EQ((LinePc{noisy, kLoaderLine}.Talk({"S"})).size(), 2U);
  EXPECT_EQ((LinePc{noisy}.Talk({"S", "P"})), "A|\rE\r|") << "without values there is no filling up";

  device.Receive("S", pc.line, 100);
  EXPECT_DOUBLE_EQ(device.NextOutput().value(), 100 + 20.0 / 9600) << "after a pause of two characters";
  EXPECT_EQ(device.TakeOutput(100 + 19.9 / 9600), "");
  EXPECT_EQ(device.TakeOutput(100 + 20.1 / 9600), "A");
}

TEST(Device, AnswersRequestsColumnByColumn) {
  DeviceOptions options;
  options.stations.parameters = {{"0012", "Pegel    ", "cm "}, {"0340", "Luftdruck", "hPa"}};
  options.stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0012", "0340"}},
                             {"00000009", "4A6", "Wehr ", 0, 0, {"0012"}}};
  options.clockStart = 951782399;
  Device device(options);
  LinePc pc{device};
  const std::string stage = "12345678: 0012 [ fs]    [ 0-9]{3}";
  const std::string pressure = "12345678: 0340 [ fs] ( 9[89]|10[0-3])\\d[.]\\d\r";
  const std::pair<Bytes, std::string> rows[] = {
      {"T", "028.02.00 23:59:59\r"},
      {"P", "\r" + stage + "\r" + pressure + "00000009: 0012.{9}\rE\r"},
      {"J4A6               \r", "\r00000009: 0012.{9}\rE\r"},
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
  // Charge in tenths of a percent and state without a preset, and with those of 0, 13, 83 and 100 percent.
  const std::pair<Bytes, Bytes> presets[] = {
      {"\xFF", "003171"}, {"\0"s, "000004"}, {"\r", "000824"}, {"S", "0033E5"}, {"d", "003E88"}};
  for (const auto& [preset, told] : presets) {
    const Bytes reply = pc.Talk({"S", ">" + preset + "\r"});
    EXPECT_EQ(reply.substr(2, 5) + reply.substr(26, 3), told + "\r|");
  }
  pc.now = 2;
  EXPECT_EQ(pc.Talk({"S", "T"}), "A|029.02.00 00:00:01\r|");
  device.Receive("S", pc.line, pc.now);
  device.Receive("P", pc.line, pc.now + 1);
  EXPECT_EQ(device.TakeSome(pc.now + 2, 6), "A\r1234");
  EXPECT_EQ(pc.Talk({"S", "N"}), "A||") << "a new dialogue cuts an old reply off";
  options.generation = 2;
  options.version = "1.0";
  Device older(options);
  EXPECT_EQ((LinePc{older}.Talk({"S", "K", "S", ">\xFF\r"})), "A|OX 2 1.0             \r|A|N|");
}

TEST(SimulatedModem, TakesSoundRecordsAndSendsThemOnOrder) {
  const Bytes office = "*123 161106 1430\r";
  const Bytes value = "#12345678: 0012 s  12.3 \r";
  const Bytes missing = "#12345678: 0012   -#### \r";
  SimulatedModem modem({});
  LinePc pc{modem};
  EXPECT_EQ(pc.Talk({"S", office, "S", value, "S", missing, office}), "A|A|A|A|A|A||");
  EXPECT_EQ(pc.Talk({"S", "*123 161106 143\r", "S", "\r", "S", Bytes(80, '#')}), "A|NR|A|NR|A|NR|");
  EXPECT_EQ(pc.Talk({"S", "#12345678: 0012 s  12.3\r", "S", "#12345678: 0012 s +12.3 \r"}), "A|NR|A|NR|");
  EXPECT_EQ(pc.Talk({"S", "N", office}), "A|||") << "the PC gives up";
  EXPECT_EQ((LinePc{modem, {9600, 'E', 7}}.Talk({"S"})), "|");
  modem.DropModemLine(pc.now);
  EXPECT_EQ(pc.Talk({""}), "CONNECT\r" + office + value + missing + "NO CARRIER\r|");
}

}  // namespace
}  // namespace ox::sim
