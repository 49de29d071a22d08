// How figures are taken and printed.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace ox::bench {

/// Seconds of the monotonic clock, which all processes share.
double Now();

/// The value below which `share` (0 to 1) of the values lie; 0 when there are none.
double Percentile(std::vector<double> values, double share);

/// Median of the times, in milliseconds, that an action takes; a first run, which warms up, is not counted.
double MedianMilliseconds(const std::function<void()>& action);

/// The figures of one program.
class Figures {
 public:
  /// Every limit is widened by `tolerance`.
  explicit Figures(double tolerance = 0) : tolerance_(tolerance) {}

  /// Prints "name: value unit (limit ...)".
  void Print(std::string_view name, double value, std::string_view unit, double limit);
  /// The same for a figure that only informs.
  static void Print(std::string_view name, double value, std::string_view unit);

  /// What the program ends with: 0 when every figure keeps its limit.
  int ExitStatus() const { return missed_ ? 1 : 0; }

 private:
  double tolerance_;
  bool missed_ = false;
};

}  // namespace ox::bench
