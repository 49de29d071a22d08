// The local time of this host.
#pragma once

#include <ctime>

#include "platform/clock.h"

namespace ox {

/// The time of day is read once, when the clock is made, and then advanced by a clock that nobody can set and
/// that goes on while the host sleeps: waits keep their lengths when somebody sets the time. It falls to 0
/// after 86400 s, on a day of summer time too. Now is what the host shows at that moment.
class PosixClock : public Clock {
 public:
  /// Reads one of the host's clocks, as clock_gettime does.
  using Reading = int (*)(clockid_t, timespec*);

  explicit PosixClock(Reading read = clock_gettime);

  float SecondsSinceMidnight() override;
  CivilTime Now() override;
  std::int64_t Milliseconds() override;

 private:
  timespec Read(clockid_t clock) const;
  /// Seconds on the clock that nobody can set.
  double Running() const;

  Reading read_;
  double midnight_;  // where that clock stood when the day began
};

}  // namespace ox
