// The local time of this host.
#pragma once

#include "platform/running_clock.h"

namespace ox {

/// It runs on the performance counter, which nobody can set and which goes on while the host sleeps. The
/// counter of milliseconds since the start does so too, but in steps of 16 ms, which is coarser than the
/// waits of the program and the times of its log.
class Win32Clock : public RunningClock {
 public:
  Win32Clock();

  CivilTime Now() override;

 private:
  double Running() const override;

  double second_;  // steps of the counter
};

}  // namespace ox
