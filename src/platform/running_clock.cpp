// From a running clock to the time of day.
#include "platform/running_clock.h"

#include <cmath>

namespace ox {
namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 60 * kSecondsPerMinute;
constexpr double kSecondsPerDay = 24.0 * kSecondsPerHour;
constexpr double kMillisecondsPerSecond = 1000;

}  // namespace

void RunningClock::Start(const CivilTime& now, double fraction) {
  const int whole = now.hour * kSecondsPerHour + now.minute * kSecondsPerMinute + now.second;
  midnight_ = Running() - (whole + fraction);
}

Seconds RunningClock::SecondsSinceMidnight() {
  return static_cast<Seconds>(std::fmod(Running() - midnight_, kSecondsPerDay));
}

std::int64_t RunningClock::Milliseconds() {
  return static_cast<std::int64_t>(Running() * kMillisecondsPerSecond);
}

}  // namespace ox
