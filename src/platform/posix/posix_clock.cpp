// The local time of this host.
#include "platform/posix/posix_clock.h"

namespace ox {
namespace {

constexpr double kNanosecond = 1e-9;
constexpr int kFirstYear = 1900;  // tm_year counts from here
constexpr int kFirstMonth = 1;    // tm_mon counts from 0

CivilTime Local(time_t seconds) {
  tm local{};
  localtime_r(&seconds, &local);
  return {local.tm_year + kFirstYear,
          local.tm_mon + kFirstMonth,
          local.tm_mday,
          local.tm_hour,
          local.tm_min,
          local.tm_sec};
}

}  // namespace

PosixClock::PosixClock(Reading read) : read_(read) {
  const timespec now = Read(CLOCK_REALTIME);
  Start(Local(now.tv_sec), static_cast<double>(now.tv_nsec) * kNanosecond);
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

CivilTime PosixClock::Now() {
  return Local(Read(CLOCK_REALTIME).tv_sec);
}

}  // namespace ox
