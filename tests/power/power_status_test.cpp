// Status line, its texts, the request, and what becomes of them in the log.
#include "power/power_status.h"

#include <gtest/gtest.h>

#include "power/power_log.h"
#include "power/power_request.h"
#include "support/memory_files.h"

namespace ox {
namespace {

constexpr CivilTime kTime{2026, 11, 16, 14, 5, 58};

std::string Shown(BytesView data) {
  const auto status = ReadPowerStatus(data);
  if (!status) return "nothing";
  const PowerStatusTexts t = FormatPowerStatus(*status);
  return t.charge + "|" + t.capacity + "|" + t.mainsVoltage + "|" + t.batteryVoltage + "|" + t.temperature +
         "|" + t.state;
}

TEST(PowerStatus, IsShownFieldByField) {
  struct Case {
    const char* data;
    const char* shown;
  };
  const Case cases[] = {
      {"031703B630390352007B0005", "79.1%|95.0%|12.345V|0.850V| 23°C|Schnellladung"},
      {"031703b630390352007b0005\r", "79.1%|95.0%|12.345V|0.850V| 23°C|Schnellladung"},
      {"0007000003E80001005F0001FFFF", "0.7%|0.0%|1.000V|0.001V|-5°C|Entladung"},
      {"7FFFFFFF8000FFF680000000", "3276.7%|0.1%|32.768V|0.010V|-32868°C|???"},
      {"03x7  12G00099-10064000A", "0.3%|0.0%|0.000V|0.153V| 0°C|Ladung verhindert"},
      {"00640064006400640063000B", "10.0%|10.0%|0.100V|0.100V|-1°C|???"},
      {"031703B630390352007B000", "nothing"},
      {"", "nothing"},
  };
  for (const Case& c : cases) EXPECT_EQ(Shown(c.data), c.shown) << c.data;
  EXPECT_EQ(Shown(Bytes(24, '\xFF')), "0.0%|0.0%|0.000V|0.000V|-100°C|???");
}

TEST(PowerStatus, NamesEveryStateOfTheCharger) {
  const char* const states[] = {"Entladung",        "Ladung blockiert", "Warten auf Temperatur",
                                "Initialladung",    "Schnellladung",    "Zeitgesteuerte Ladung",
                                "Überladung",       "Ladung beendet",   "Akkukontrolle",
                                "Ladung verhindert"};
  int code = 0;
  for (const char* state : states) EXPECT_EQ(FormatPowerStatus({.state = ++code}).state, state);
  for (const int unknown : {0, 11, -1, -32768, 32767})
    EXPECT_EQ(FormatPowerStatus({.state = unknown}).state, "???");
}

TEST(PowerRequest, CarriesAPresetOrTheMarkForNone) {
  for (const int none : {-1, 101, 150, -32768, 32767}) EXPECT_EQ(BuildStatusRequest(none), ">\xFF\r");
  EXPECT_EQ(BuildStatusRequest(0), Bytes(">\0\r", 3));
  EXPECT_EQ(BuildStatusRequest(50), ">\x32\r");
  EXPECT_EQ(BuildStatusRequest(100), ">\x64\r");
}

TEST(PowerRequest, ReadsThePresetAsItsUserMeantIt) {
  struct Case {
    const char* text;
    int preset;
  };
  const Case cases[] = {{"50", 50},
                        {" 50 ", 50},
                        {"50%", 50},
                        {"+7", 7},
                        {"007", 7},
                        {"", 0},
                        {"abc", 0},
                        {"-", 0},
                        {".", 0},
                        {"ä50", 0},
                        {"0.5", 0},
                        {"1.5", 2},
                        {"2.5", 2},
                        {"2.50", 2},
                        {"2.5001", 3},
                        {"2.49", 2},
                        {".6", 1},
                        {"99.9", 100},
                        {"100.5", 100},
                        {"100.51", 101},
                        {"-0.5", 0},
                        {"-1", -1},
                        {"-1.5", -2},
                        {"12,9", 12},
                        {"nan", 0},
                        {"150", 150},
                        {"32767.9", 32767},
                        {"65586", 32767},
                        {"4294967346", 32767},
                        {"-99999999999999999999", -32767}};
  for (const Case& c : cases) EXPECT_EQ(ReadPreset(c.text), c.preset) << c.text;
}

TEST(PowerLog, LaysOutItsLineInColumns) {
  const auto status = ReadPowerStatus("031703B630390352007B0005");
  EXPECT_EQ(LogLine(kTime, FormatPowerStatus(*status)),
            "11-16-2026 14:05:58  Akkuldg:  79.1%  Akkuspg: 0.850V  Netzteilspg: 12.345V  "
            "Kapazität:  95.0%  Temp.: 23°C  Ladebetrieb: Schnellladung");
  EXPECT_EQ(LogLine({2027, 1, 2, 3, 4, 0}, FormatPowerStatus({32767, 7, 1, 20000, -32768, 7})),
            "01-02-2027 03:04:00  Akkuldg: 276.7%  Akkuspg:20.000V  Netzteilspg:  0.001V  "
            "Kapazität:   0.7%  Temp.:868°C  Ladebetrieb: Überladung");
}

TEST(PowerLog, IsDueWithEveryNewStateAndOnceAMinute) {
  LogRule rule;
  rule.Restart(30);
  EXPECT_TRUE(rule.TakeIfDue(0, 30)) << "the first sample always";
  EXPECT_FALSE(rule.TakeIfDue(0, 40));
  EXPECT_TRUE(rule.TakeIfDue(5, 41)) << "a new state";
  EXPECT_FALSE(rule.TakeIfDue(5, 100.25F));
  EXPECT_TRUE(rule.TakeIfDue(5, 100.5F)) << "59.5 seconds later";
  EXPECT_TRUE(rule.TakeIfDue(5, 86399));
  EXPECT_TRUE(rule.TakeIfDue(5, 0.5F)) << "midnight";
  EXPECT_FALSE(rule.TakeIfDue(5, 1.5F));
  EXPECT_TRUE(rule.TakeIfDue(-1, 2.5F));
}

TEST(PowerLog, SetsEachRunOffAndIsOpenOnlyDuringIt) {
  test::MemoryFiles files;
  const Bytes header = "\r\n\r\n" + Bytes(140, '-') + "\r\n";
  {
    PowerLog log(files);
    ASSERT_TRUE(log.Start());
    EXPECT_TRUE(log.Write("Kapazität"));
    log.Close();
    EXPECT_EQ(files.openForAppending, 0);
    ASSERT_TRUE(log.Start());
  }
  EXPECT_EQ(files.content["PowerManagementLog.txt"], header + "Kapazität\r\n" + header);
  EXPECT_EQ(files.openForAppending, 0);

  PowerLog log(files);
  files.appendable = 2;
  EXPECT_FALSE(log.Start()) << "a disk that fills up within the header";
  EXPECT_EQ(files.openForAppending, 0);
  files.writable = false;
  EXPECT_FALSE(log.Start());
}

}  // namespace
}  // namespace ox
