// The local time of this host.
#pragma once

#include "platform/clock.h"

namespace ox {

class PosixClock : public Clock {
 public:
  float SecondsSinceMidnight() override;
  CivilTime Now() override;
};

}  // namespace ox
