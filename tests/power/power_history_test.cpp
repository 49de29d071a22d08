// The course of the power supply: what stays in sight, and how much is kept.
#include "power/power_history.h"

#include <gtest/gtest.h>

#include "power/power_log_reader.h"

#include <string>
#include <utility>

namespace ox::test {

PowerStatus Charge(int tenths) {
  return {.charge = tenths, .batteryVoltage = 6800, .temperature = 95};
}

TEST(PowerHistory, AWeekIsKeptInTheMemoryOfAnHourWithItsPeaksAndGaps) {
  constexpr int kWeek = 7 * 86400;
  constexpr int kPeak = 300000;
  constexpr int kSilence = 400000;  // begins here
  constexpr int kSilentFor = 7200;
  PowerHistory history;
  history.Restart({2026, 11, 22, 23, 0, 0}, 82800);
  const std::vector<CurveSpan>& spans = history.Data().spans;
  for (int second = 1; second <= kWeek; ++second) {
    if (second >= kSilence && second < kSilence + kSilentFor) {
      history.Miss();
    } else {
      const int charge = second == kPeak ? 990 : second == kWeek ? 510 : 500;
      history.Add(Charge(charge), static_cast<Seconds>((82800 + second) % 86400));
    }
    ASSERT_TRUE(second > 2048 || spans.size() == static_cast<std::size_t>(second)) << "each for itself";
    ASSERT_LE(spans.size(), 2048U);
  }
  EXPECT_NEAR(spans.back().last, kWeek, 1) << "midnight is counted over";
  EXPECT_EQ(spans.back().ranges[0].last, 51.0);
  EXPECT_EQ(spans.size(), 1182U - 13U) << "of 512 seconds each, without those in the silence";
  int peaks = 0;
  int gaps = 0;
  for (const CurveSpan& span : spans) {
    const CurveRange& charge = span.ranges[0];
    EXPECT_EQ(charge.least, 50.0);
    if (charge.greatest == 99.0) ++peaks;
    if (span.afterGap) {
      ++gaps;
      EXPECT_NEAR(span.first, kSilence + kSilentFor, 1);
    }
    EXPECT_EQ(span.ranges[1].last, 6.8);
    EXPECT_EQ(span.ranges[2].last, -5);
  }
  EXPECT_EQ(std::pair(peaks, gaps), std::pair(1, 1));
  // Nothing of it is left in the next course.
  history.Miss();
  history.Restart({2026, 11, 30, 1, 0, 0}, 3600);
  EXPECT_TRUE(spans.empty() && history.Data().start.day == 30);
  for (const float now : {3601.0F, 3602.0F}) history.Add(Charge(500), now);
  EXPECT_TRUE(spans.size() == 2 && spans[0].first == 1 && !spans[0].afterGap);
}

TEST(PowerLogReader, TakesWhatCanStandInALog) {
  const auto kindOf = [](const std::string& text) { return PowerLogReader(text).Next(); };
  const std::string values =
      " Akkuldg: 1%  Akkuspg: 1V  Netzteilspg: 1V  Kapazität: 1%  Temp.: -1°C  Ladebetrieb: AZ az?À";
  for (const char* time :
       {"00-01-0001 00:00:00", "13-01-0001 00:00:00", "01-00-0001 00:00:00", "01-32-0001 00:00:00",
        "01-01-0000 00:00:00", "01-01-0001 24:00:00", "01-01-0001 00:60:00", "01-01-0001 00:00:61", "",
        "01/01-0001 00:00:00", "1x-01-0001 00:00:00", "01-01-0001 00:00:  "})
    EXPECT_EQ(kindOf(time + values), LogLineKind::kUnknown) << time;
  EXPECT_EQ(kindOf("12-31-9999 23:59:60" + values + "\r\n"), LogLineKind::kEntry);
  std::string longest = "01-01-0001 00:00:00" + values;
  const std::pair<std::string_view, const char*> rightsAndWrongs[] = {
      {" Akkuldg: 1%", ""}, {" 1%", ""}, {"1%", "x1%"}, {"1%", ".1%"}, {"1%", "1.x%"}, {"Ladebetrieb:", ""},
      {"À", "1"},           {"À", "@"},  {"À", "["},    {"À", "`"},    {"À", "{"}};
  for (const auto& [right, wrong] : rightsAndWrongs)
    EXPECT_EQ(kindOf(std::string(longest).replace(longest.find(right), right.size(), wrong)),
              LogLineKind::kUnknown)
        << right << wrong;
  longest.resize(1000, 'x');
  EXPECT_EQ(kindOf(longest), LogLineKind::kEntry);
  EXPECT_EQ(kindOf(longest + "x"), LogLineKind::kUnknown);
  EXPECT_EQ(kindOf(std::string(20, '-')), LogLineKind::kRuler);
  EXPECT_EQ(kindOf(std::string(19, '-')), LogLineKind::kUnknown);
}

TEST(PowerHistory, AGapIsWhereTheDeviceSaidNothingOrNothingThatCouldBeRead) {
  PowerHistory history;
  history.Restart({2026, 11, 22, 10, 0, 0}, 36000);
  std::string gaps;
  // Seconds from one sample to the next; a slow reply makes no gap.
  for (const float pause : {1.0F, 5.0F, 0.0F, 6.0F, 1.0F}) {
    static float now = 36000;
    history.Add(Charge(500), now += pause);
    if (pause > 5) history.Miss();
  }
  for (const CurveSpan& span : history.Data().spans) gaps += span.afterGap ? "gap " : "- ";
  EXPECT_EQ(gaps, "- - gap gap ");
}

}  // namespace ox::test
