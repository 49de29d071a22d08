// Spans that grow with the time that they cover.
#include "power/power_history.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace ox {
namespace {

constexpr double kSecondsPerDay = 86400;

/// Tenths of a percent, millivolts and degrees as the fields show them.
std::array<double, kCurveLines> ValuesOf(const PowerStatus& status) {
  return {status.charge / 10.0, status.batteryVoltage / 1000.0,
          static_cast<double>(status.temperature - kTemperatureOffset)};
}

/// Takes a later span into an earlier one.
void Join(CurveSpan& span, const CurveSpan& later) {
  span.last = later.last;
  for (std::size_t line = 0; line < kCurveLines; ++line) {
    CurveRange& range = span.ranges[line];
    const CurveRange& added = later.ranges[line];
    range = {std::min(range.least, added.least), std::max(range.greatest, added.greatest), added.last};
  }
}

}  // namespace

PowerHistory::PowerHistory() {
  data_.lines = {CurveLine{"Akkuladung", "%", 1, 1.0}, CurveLine{"Akkuspannung", "V", 3, 0.1},
                 CurveLine{"Temperatur", "°C", 0, 4.0}};
}

void PowerHistory::Restart(const CivilTime& start, Seconds now) {
  data_.start = start;
  data_.spans.clear();
  lastTime_ = now;
  elapsed_ = 0;
  spanSeconds_ = 1;
  missed_ = false;
}

void PowerHistory::Add(const PowerStatus& status, Seconds now) {
  const double time = Elapsed(now);
  CurveSpan sample{.first = time, .last = time, .afterGap = std::exchange(missed_, false)};
  const std::array<double, kCurveLines> values = ValuesOf(status);
  for (std::size_t line = 0; line < kCurveLines; ++line) {
    sample.ranges[line] = {values[line], values[line], values[line]};
  }
  if (!data_.spans.empty() && time - data_.spans.back().last > kGapSeconds) sample.afterGap = true;
  Append(data_.spans, sample);
  while (data_.spans.size() > kMostSpans) HalveSpans();
}

double PowerHistory::Elapsed(Seconds now) {
  const double step = static_cast<double>(now) - static_cast<double>(lastTime_);
  elapsed_ += step < 0 ? step + kSecondsPerDay : step;  // the clock falls back at midnight
  lastTime_ = now;
  return elapsed_;
}

void PowerHistory::Append(std::vector<CurveSpan>& spans, const CurveSpan& span) const {
  const auto place = [this](const CurveSpan& one) { return std::floor(one.first / spanSeconds_); };
  // A gap that is shorter than a span goes with it: nobody could see it.
  if (!spans.empty() && place(spans.back()) == place(span)) {
    Join(spans.back(), span);
  } else {
    spans.push_back(span);
  }
}

void PowerHistory::HalveSpans() {
  spanSeconds_ *= 2;
  std::vector<CurveSpan> wider;
  for (const CurveSpan& span : data_.spans) Append(wider, span);
  data_.spans = std::move(wider);
}

}  // namespace ox
