// Where an axis has its marks. Plain arithmetic, no toolkit.
#pragma once

#include <string>
#include <vector>

#include "platform/clock.h"

namespace ox {

/// A mark of a time axis and what stands beside it.
struct TimeMark {
  double second = 0;  // since the start of the axis
  std::string text;   // "14:05:58", "14:05" or, where a day begins, "23.11."
};

/// Marks at round times of day, as close as they may be; at most `most`, which is 1 or more. `length` of the
/// axis in seconds.
std::vector<TimeMark> TimeMarks(const CivilTime& start, double length, int most);

/// "14:05:58", a day or more after the start "23.11. 14:05:58".
std::string TimeText(const CivilTime& start, double second);

/// "22.11.2026 14:05:58"
std::string DateAndTime(const CivilTime& start, double second);

/// Ends of an axis of values.
struct AxisRange {
  double low = 0;
  double high = 0;
};

/// Round numbers around the values, at least `span` apart.
AxisRange RangeAround(double least, double greatest, double span);

}  // namespace ox
