// Time as the program sees it.
#pragma once

#include <cstdint>

namespace ox {

/// A date and a time of day of the host's local time.
struct CivilTime {
  int year = 0;    // four digits
  int month = 0;   // 1 to 12
  int day = 0;     // 1 to 31
  int hour = 0;    // 0 to 23
  int minute = 0;  // 0 to 59
  int second = 0;  // 0 to 60
};

/// A time of day or a length of time, in single precision: in the evening a step of the clock is 8 ms.
using Seconds = float;

class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since local midnight with their fraction, rounded to single precision: falls back to 0 at
  /// midnight.
  virtual Seconds SecondsSinceMidnight() = 0;

  virtual CivilTime Now() = 0;

  /// Milliseconds from an arbitrary start on, on a clock that nobody can set; for the times in a log.
  virtual std::int64_t Milliseconds() = 0;
};

}  // namespace ox
