// Virtual time: it passes only when the test host lets it.
#pragma once

#include <cmath>

#include "platform/clock.h"

namespace ox::test {

class TestClock : public Clock {
 public:
  static constexpr double kSecondsPerDay = 86400;

  float SecondsSinceMidnight() override { return static_cast<float>(TimeOfDay()); }

  CivilTime Now() override {
    const int second = static_cast<int>(TimeOfDay());
    const int day = static_cast<int>((start_ + elapsed_) / kSecondsPerDay);
    return {2026, 11, 16 + day, second / 3600, second / 60 % 60, second % 60};
  }

  std::int64_t Milliseconds() override { return std::llround(elapsed_ * 1000); }

  void StartAt(int hour, int minute, double second) { start_ = hour * 3600 + minute * 60 + second; }

  void Advance(double seconds) { elapsed_ += seconds; }
  double Elapsed() const { return elapsed_; }

 private:
  double TimeOfDay() const { return std::fmod(start_ + elapsed_, kSecondsPerDay); }

  double start_ = 10 * 3600;
  double elapsed_ = 0;
};

}  // namespace ox::test
