// Measured values: their form, their range, and that they can be had again.
#include "simulator/polls.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace ox::sim {
namespace {

StationData OneOfEach() {
  StationData stations;
  stations.parameters = {{"0001", "Luftdruck", "hPa"},
                         {"0002", "Temperatu",
                          "\x5B"
                          "C "},
                         {"0003", "Unbekannt", "xyz"}};
  stations.points = {{"12345678", "123", "Pegel", 0, 0, {"0001", "0002", "0003", "0004"}}};
  return stations;
}

TEST(Polls, RecordsKeepTheirColumnsAndValuesTheirRange) {
  const StationData stations = OneOfEach();
  Polls polls(7);
  const std::pair<double, double> ranges[] = {{985, 1035}, {-4, 27}, {0, 99}, {0, 99}};
  std::set<Bytes> pressures;
  std::set<char> flags;
  for (int poll = 0; poll < 500; ++poll) {
    const ReplyLines lines = polls.AnswerP(stations, 0);
    ASSERT_EQ(lines.size(), 6U);
    for (size_t i = 0; i < 4; ++i) {
      const Bytes& record = lines[i + 1];
      ASSERT_EQ(record.size(), 24U);
      EXPECT_EQ(record.substr(0, 15), "12345678: 000" + std::to_string(i + 1) + " ");
      const double value = std::strtod(record.substr(17, 6).c_str(), nullptr);
      EXPECT_GE(value, ranges[i].first - 0.05);
      EXPECT_LE(value, ranges[i].second + 0.05);
      flags.insert(record[15]);
    }
    pressures.insert(lines[1].substr(17, 6));
  }
  EXPECT_GT(pressures.size(), 20U) << "values move";
  EXPECT_EQ(flags, (std::set<char>{' ', 'f', 's'}));
}

TEST(Polls, TheSameSeedGivesTheSameValues) {
  const StationData stations = OneOfEach();
  Polls one(3);
  Polls same(3);
  Polls other(4);
  for (int poll = 0; poll < 3; ++poll) {
    const ReplyLines lines = one.AnswerP(stations, 0);
    EXPECT_EQ(lines, same.AnswerP(stations, 0));
    EXPECT_NE(lines, other.AnswerP(stations, 0));
  }
}

TEST(Polls, WithoutValuesEvenALongReplyIsEmpty) {
  StationData stations = OneOfEach();
  stations.points[0].parameters.clear();
  EXPECT_EQ(Polls(1).AnswerP(stations, 1000), (ReplyLines{"\r", "E\r"}));
  EXPECT_EQ(Polls(1).AnswerP({}, 1000), (ReplyLines{"\r", "E\r"}));
}

}  // namespace
}  // namespace ox::sim
