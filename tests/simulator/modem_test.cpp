// The simulated modem.
#include "simulator/modem.h"

#include <gtest/gtest.h>

#include "simulator/line_pc.h"

namespace ox::sim {
namespace {

TEST(SimulatedModem, TakesSoundRecordsOnly) {
  const std::pair<Bytes, Bytes> cases[] = {
      {"*123 161106 1430\r", "A"},
      {"#12345678: 0012 s  12.3 \r", "A"},
      {"#12345678: 0012   -#### \r", "A"},
      {"*123 161106 143\r", "NR"},
      {"#12345678: 0012 s  12.3\r", "NR"},
      {"#12345678: 0012 s +12.3 \r", "NR"},
      {"\r", "NR"},
      {Bytes(90, '#'), "NR"},
  };
  SimulatedModem modem({});
  LinePc pc(modem);
  for (const auto& [record, answer] : cases) EXPECT_EQ(pc.Dialogue(record), answer) << record;
  EXPECT_EQ(modem.Records().size(), 3U);
  EXPECT_EQ(pc.Ask("*123 161106 1430\r"), "") << "not woken";
}

TEST(SimulatedModem, AnswersAsItIsTold) {
  for (const Bytes answer : {"N", "NR", "R", ""}) {
    ModemOptions options;
    options.answer = answer;
    SimulatedModem modem(options);
    EXPECT_EQ(LinePc(modem).Dialogue("*123 161106 1430\r"), answer);
    EXPECT_TRUE(modem.Records().empty());
  }
  ModemOptions options;
  options.wakes = false;
  SimulatedModem modem(options);
  EXPECT_EQ(LinePc(modem).Dialogue("*123 161106 1430\r"), "-");
  SimulatedModem sound({});
  EXPECT_EQ(LinePc(sound, {9600, 'E', 7}).Ask("S"), "");
}

TEST(SimulatedModem, SendsWhatItHoldsOnOrderOrByItself) {
  SimulatedModem modem({});
  LinePc pc(modem);
  pc.Dialogue("*123 161106 1430\r");
  modem.DropModemLine(pc.Now());
  EXPECT_EQ(pc.Ask(""), "CONNECT\r*123 161106 1430\rNO CARRIER\r");

  ModemOptions options;
  options.burstPeriod = 10;
  SimulatedModem lively(options);
  EXPECT_EQ(lively.TakeOutput(9), "");
  EXPECT_EQ(lively.NextOutput(), 10);
  lively.TakeOutput(10);
  EXPECT_EQ(lively.TakeOutput(11), "CONNECT\rNO CARRIER\r");
  EXPECT_EQ(lively.NextOutput(), 20);
}

}  // namespace
}  // namespace ox::sim
