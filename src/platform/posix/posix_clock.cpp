// The local time of this host.
#include "platform/posix/posix_clock.h"

#include <ctime>

namespace ox {
namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 60 * kSecondsPerMinute;
constexpr double kNanosecond = 1e-9;
constexpr int kFirstYear = 1900;  // tm_year counts from here
constexpr int kFirstMonth = 1;    // tm_mon counts from 0

tm Local(time_t seconds) {
  tm local{};
  localtime_r(&seconds, &local);
  return local;
}

}  // namespace

float PosixClock::SecondsSinceMidnight() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  const tm local = Local(now.tv_sec);
  const int whole = local.tm_hour * kSecondsPerHour + local.tm_min * kSecondsPerMinute + local.tm_sec;
  return static_cast<float>(whole + static_cast<double>(now.tv_nsec) * kNanosecond);
}

CivilTime PosixClock::Now() {
  const tm local = Local(std::time(nullptr));
  return {local.tm_year + kFirstYear,
          local.tm_mon + kFirstMonth,
          local.tm_mday,
          local.tm_hour,
          local.tm_min,
          local.tm_sec};
}

}  // namespace ox
