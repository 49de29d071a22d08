// Calendar arithmetic of the device's clock.
#include "simulator/device/device_clock.h"

#include <chrono>
#include <cstdio>

namespace ox::sim {

Bytes FormatDateAndTime(std::int64_t secondsSince1970) {
  const std::chrono::sys_seconds point{std::chrono::seconds(secondsSince1970)};
  const auto day = std::chrono::floor<std::chrono::days>(point);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(point - day);
  constexpr int kYearsOfACentury = 100;
  char text[64];
  std::snprintf(text, sizeof text, "%02u.%02u.%02d %02d:%02d:%02d", static_cast<unsigned>(date.day()),
                static_cast<unsigned>(date.month()), static_cast<int>(date.year()) % kYearsOfACentury,
                static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count()));
  return text;
}

}  // namespace ox::sim
