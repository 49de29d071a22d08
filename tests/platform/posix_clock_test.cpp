// The host's clock and its signals: what the program sees of them.
#include "platform/posix/posix_clock.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/console_events.h"
#include "platform/posix/posix_end_requests.h"

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

TEST(PosixEndRequestsTest, ARestNoticesASignalUnlessNohupHasItIgnored) {
  const OpenPorts ports;
  ConsoleEvents events(ports);
  for (const auto before : {SIG_DFL, SIG_IGN}) {
    std::signal(SIGHUP, before);
    std::optional<PosixEndRequests> requests(std::in_place);
    const bool& requested = events.Watch(requests->Handle());
    EXPECT_FALSE(requested) << "nobody has asked yet";
    for (int times = errno = 0; times < 70'000; ++times) raise(SIGHUP);  // more than its pipe holds
    EXPECT_EQ(errno, 0) << "what the program did failed for another reason";
    events.Rest();
    EXPECT_EQ(requested, before == SIG_DFL);
    requests.reset();
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), before);
  }
}

}  // namespace
}  // namespace ox
