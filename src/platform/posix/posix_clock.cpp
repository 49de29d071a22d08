// The local time of this host.
#include "platform/posix/posix_clock.h"

#include <cmath>

namespace ox {
namespace {

constexpr int kSecondsPerMinute = 60;
constexpr int kSecondsPerHour = 60 * kSecondsPerMinute;
constexpr double kSecondsPerDay = 24.0 * kSecondsPerHour;
constexpr double kNanosecond = 1e-9;
constexpr double kMillisecondsPerSecond = 1000;
constexpr int kFirstYear = 1900;  // tm_year counts from here
constexpr int kFirstMonth = 1;    // tm_mon counts from 0

tm Local(time_t seconds) {
  tm local{};
  localtime_r(&seconds, &local);
  return local;
}

double TimeOfDay(const timespec& time) {
  const tm local = Local(time.tv_sec);
  const int whole = local.tm_hour * kSecondsPerHour + local.tm_min * kSecondsPerMinute + local.tm_sec;
  return whole + static_cast<double>(time.tv_nsec) * kNanosecond;
}

}  // namespace

PosixClock::PosixClock(Reading read) : read_(read), midnight_(0) {
  midnight_ = Running() - TimeOfDay(Read(CLOCK_REALTIME));
}

timespec PosixClock::Read(clockid_t clock) const {
  timespec now{};
  read_(clock, &now);
  return now;
}

double PosixClock::Running() const {
  const timespec now = Read(CLOCK_BOOTTIME);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * kNanosecond;
}

float PosixClock::SecondsSinceMidnight() {
  return static_cast<float>(std::fmod(Running() - midnight_, kSecondsPerDay));
}

CivilTime PosixClock::Now() {
  const tm local = Local(Read(CLOCK_REALTIME).tv_sec);
  return {local.tm_year + kFirstYear,
          local.tm_mon + kFirstMonth,
          local.tm_mday,
          local.tm_hour,
          local.tm_min,
          local.tm_sec};
}

std::int64_t PosixClock::Milliseconds() {
  return static_cast<std::int64_t>(Running() * kMillisecondsPerSecond);
}

}  // namespace ox
