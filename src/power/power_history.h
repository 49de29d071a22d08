// The course of charge, voltage and temperature, in a memory that does not grow with the time.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/clock.h"
#include "power/power_status.h"
#include "ui/curve.h"

namespace ox {

/// Keeps every sample for itself at first. When there are too many spans, each takes in what twice the time
/// brings, with the least and the greatest of it: peaks stay in sight, and a week is as large as an hour.
class PowerHistory {
 public:
  /// Half an hour of single seconds.
  static constexpr std::size_t kMostSpans = 2048;
  /// Samples that are farther apart have a gap between them; a slow reply makes none.
  static constexpr double kGapSeconds = 5.0;

  PowerHistory();

  /// Forgets all samples. Both tell the time of second 0: as the host shows it, and since midnight.
  void Restart(const CivilTime& start, Seconds now);

  /// Adds a sample. Midnight is counted over; two samples are less than a day apart.
  void Add(const PowerStatus& status, Seconds now);
  /// The device told nothing that could be read: the next sample stands behind a gap.
  void Miss() { missed_ = true; }

  /// Percent, volts, degrees Celsius; changes with the history.
  const CurveData& Data() const { return data_; }

 private:
  /// Seconds since the start.
  double Elapsed(Seconds now);
  /// Adds a span behind others, or takes it into the last when both are in the same stretch of time.
  void Append(std::vector<CurveSpan>& spans, const CurveSpan& span) const;
  void HalveSpans();

  CurveData data_;
  Seconds lastTime_ = 0;    // since midnight
  double elapsed_ = 0;      // seconds from the start to it
  double spanSeconds_ = 1;  // the stretch of time that makes one span
  bool missed_ = false;
};

}  // namespace ox
