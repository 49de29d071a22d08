// The host's clock: what the program sees of it, whatever is done to it.
#include "platform/posix/posix_clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace ox {
namespace {

timespec wall, running;

int ReadFake(clockid_t clock, timespec* time) {
  *time = clock == CLOCK_REALTIME ? wall : running;
  return 0;
}

std::string Shown(const CivilTime& time) {
  std::string shown;
  for (const int part : {time.year, time.month, time.day, time.hour, time.minute, time.second})
    shown += std::to_string(part) + " ";
  return shown;
}

TEST(PosixClockTest, GoesOnFromTheTimeThatItWasMadeAtUntilMidnight) {
  setenv("TZ", "HERE-1:30", 1);
  tzset();
  wall = {1794832496, 250'000'000};  // 14:04:56.25 here
  running = {1000, 750'000'000};
  PosixClock clock(ReadFake);
  EXPECT_EQ(Shown(clock.Now()), "2026 11 16 14 4 56 ");
  constexpr float kMade = 14 * 3600 + 4 * 60 + 56.25F;
  const std::tuple<time_t, time_t, float> setByRanAndSeen[] = {
      {0, 0, kMade},
      {-3600, 3, kMade + 3},
      {86400, 3, kMade + 3},
      {0, 86400 - 50696, 0.25F},
      {0, 2 * 86400 + 60, kMade + 60},
  };
  const timespec wallBefore = wall, runningBefore = running;
  for (const auto& [setBy, ran, seen] : setByRanAndSeen) {
    wall.tv_sec = wallBefore.tv_sec + setBy + ran;
    running.tv_sec = runningBefore.tv_sec + ran;
    EXPECT_EQ(clock.SecondsSinceMidnight(), seen) << setBy << " " << ran;
    EXPECT_EQ(clock.Milliseconds(), 1000'750 + 1000 * ran);
  }
  wall.tv_sec = wallBefore.tv_sec - 14 * 3600;
  EXPECT_EQ(Shown(clock.Now()), "2026 11 16 0 4 56 ") << "the log tells what the host shows";
}

}  // namespace
}  // namespace ox
