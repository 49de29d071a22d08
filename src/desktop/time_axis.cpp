// Round times, and round numbers.
#include "desktop/time_axis.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

#include "platform/time_text.h"

namespace ox {
namespace {

constexpr int kMinute = 60;
constexpr int kHour = 60 * kMinute;
constexpr int kDay = 24 * kHour;

/// Distances between marks, in seconds; behind these come whole weeks.
constexpr std::array kSteps = {1,        2,           5,           10,           15,           30,
                               kMinute,  2 * kMinute, 5 * kMinute, 10 * kMinute, 15 * kMinute, 30 * kMinute,
                               kHour,    2 * kHour,   3 * kHour,   6 * kHour,    12 * kHour,   kDay,
                               2 * kDay, 7 * kDay};

/// A moment of the axis: how many days after the first one, and the second of that day.
struct Moment {
  int day = 0;
  int second = 0;
};

int SecondOfDay(const CivilTime& time) {
  return time.hour * kHour + time.minute * kMinute + time.second;
}

Moment At(const CivilTime& start, double second) {
  const auto sinceMidnight = static_cast<int>(std::floor(SecondOfDay(start) + second));
  return {sinceMidnight / kDay, sinceMidnight % kDay};
}

template <class... Numbers>
std::string Format(const char* format, Numbers... numbers) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, numbers...);
  return text.data();
}

std::chrono::year_month_day DateOf(const CivilTime& start, int day) {
  const std::chrono::year_month_day first(std::chrono::year(start.year),
                                          std::chrono::month(static_cast<unsigned>(start.month)),
                                          std::chrono::day(static_cast<unsigned>(start.day)));
  return std::chrono::sys_days(first) + std::chrono::days(day);
}

std::string Date(const CivilTime& start, int day) {
  const auto date = DateOf(start, day);
  return Format("%02u.%02u.", static_cast<unsigned>(date.day()), static_cast<unsigned>(date.month()));
}

std::string Time(int second, bool withSeconds) {
  const int hour = second / kHour;
  const int minute = second / kMinute % kMinute;
  return withSeconds ? Format("%02d:%02d:%02d", hour, minute, second % kMinute)
                     : Format("%02d:%02d", hour, minute);
}

int StepFor(double length, int most) {
  const auto fits = [&](int step) { return length / step < most; };
  const auto* const step = std::ranges::find_if(kSteps, fits);
  if (step != kSteps.end()) return *step;
  return kSteps.back() * (static_cast<int>(length / kSteps.back() / most) + 1);
}

}  // namespace

std::vector<TimeMark> TimeMarks(const CivilTime& start, double length, int most) {
  const int step = StepFor(length, most);
  const int begin = SecondOfDay(start);
  std::vector<TimeMark> marks;
  for (int time = (begin + step - 1) / step * step; time - begin <= length; time += step) {
    const Moment moment{time / kDay, time % kDay};
    const bool dayBegins = moment.second == 0 && (moment.day > 0 || step >= kDay);
    marks.push_back({static_cast<double>(time - begin),
                     dayBegins ? Date(start, moment.day) : Time(moment.second, step < kMinute)});
  }
  return marks;
}

std::string TimeText(const CivilTime& start, double second) {
  const Moment moment = At(start, second);
  return (moment.day > 0 ? Date(start, moment.day) + " " : "") + Time(moment.second, true);
}

std::string DateAndTime(const CivilTime& start, double second) {
  const Moment moment = At(start, second);
  const auto date = DateOf(start, moment.day);
  return GermanTime({static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                     static_cast<int>(static_cast<unsigned>(date.day())), moment.second / kHour,
                     moment.second / kMinute % kMinute, moment.second % kMinute});
}

AxisRange RangeAround(double least, double greatest, double span) {
  const double missing = std::max(span - (greatest - least), 0.0) / 2;
  const double low = least - missing;
  const double high = greatest + missing;
  // Rounded to a 1, 2 or 5 with noughts, a tenth to a quarter of what is covered.
  const double tenth = std::pow(10, std::floor(std::log10(high - low))) / 10;
  double step = tenth;
  for (const double times : {2, 5, 10}) {
    if ((high - low) / step > 10) step = tenth * times;
  }
  return {std::floor(low / step) * step, std::ceil(high / step) * step};
}

}  // namespace ox
