// The local time of this host.
#pragma once

#include <ctime>

#include "platform/running_clock.h"

namespace ox {

class PosixClock : public RunningClock {
 public:
  /// Reads one of the host's clocks, as clock_gettime does.
  using Reading = int (*)(clockid_t, timespec*);

  explicit PosixClock(Reading read = clock_gettime);

  CivilTime Now() override;

 private:
  timespec Read(clockid_t clock) const;
  double Running() const override;

  Reading read_;
};

}  // namespace ox
