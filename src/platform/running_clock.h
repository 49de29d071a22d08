// The time of day, advanced by a clock that nobody can set.
#pragma once

#include "platform/clock.h"

namespace ox {

/// The time of day is read once, when the clock is made, and then advanced by a clock that nobody can set and
/// that goes on while the host sleeps: waits keep their lengths when somebody sets the time. It falls to 0
/// after 86400 s, on a day of summer time too. Now is what the host shows at that moment.
class RunningClock : public Clock {
 public:
  Seconds SecondsSinceMidnight() override;
  std::int64_t Milliseconds() override;

 protected:
  /// Called once, when the clock is made: the host's time of day, and the fraction of its second.
  void Start(const CivilTime& now, double fraction);

 private:
  /// Seconds on the clock that nobody can set.
  virtual double Running() const = 0;

  double midnight_ = 0;  // where that clock stood when the day began
};

}  // namespace ox
