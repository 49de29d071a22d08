// A curve over time: what it consists of, and the control that shows it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "ui/controls.h"

namespace ox {

/// One of the quantities that are drawn. Texts are UTF-8.
struct CurveLine {
  std::string name;
  std::string unit;
  int decimals = 0;    // of its values, wherever they are written
  double least = 1.0;  // how much its axis covers at least, so that noise stays small
};

/// What one quantity was in a span of time.
struct CurveRange {
  double least = 0;
  double greatest = 0;
  double last = 0;
};

constexpr std::size_t kCurveLines = 3;

/// One sample, or several that are kept together. Times are seconds since the start.
struct CurveSpan {
  double first = 0;
  double last = 0;
  bool afterGap = false;  // nothing is known of the time before it
  std::array<CurveRange, kCurveLines> ranges{};
};

struct CurveData {
  std::array<CurveLine, kCurveLines> lines;
  CivilTime start;               // of second 0
  std::vector<CurveSpan> spans;  // in the order of time
};

class Curve : public Control {
 public:
  using Control::Control;

  /// Shows these data from now on, or anew when they have changed. They outlive the control.
  void Show(const CurveData& data) {
    data_ = &data;
    Tell(Change::kText);
  }

  /// Null until there are any.
  const CurveData* Data() const { return data_; }

 private:
  const CurveData* data_ = nullptr;
};

}  // namespace ox
