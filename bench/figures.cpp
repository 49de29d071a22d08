// Medians and the one form in which figures are printed.
#include "bench/figures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>

namespace ox::bench {
namespace {

constexpr int kRuns = 21;
constexpr double kMillisecondsPerSecond = 1000;

std::string Head(std::string_view name, double value, std::string_view unit) {
  constexpr int kMostDigits = 64;
  char number[kMostDigits];
  std::snprintf(number, sizeof number, "%.4g", value);
  std::string head = std::string(name) + ": " + number;
  if (!unit.empty()) head += " " + std::string(unit);
  return head;
}

}  // namespace

double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Percentile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  const auto place = static_cast<std::size_t>(share * static_cast<double>(values.size()));
  const auto nth = values.begin() + static_cast<std::ptrdiff_t>(std::min(place, values.size() - 1));
  std::nth_element(values.begin(), nth, values.end());
  return *nth;
}

double MedianMilliseconds(const std::function<void()>& action) {
  action();
  std::vector<double> times;
  for (int run = 0; run < kRuns; ++run) {
    const double start = Now();
    action();
    times.push_back((Now() - start) * kMillisecondsPerSecond);
  }
  return Percentile(std::move(times), 0.5);
}

void Figures::Print(std::string_view name, double value, std::string_view unit, double limit) {
  limit += tolerance_;
  const bool missed = value > limit;
  std::printf("%s (limit %.4g)%s\n", Head(name, value, unit).c_str(), limit, missed ? "  <-- MISSED" : "");
  std::fflush(stdout);
  missed_ = missed_ || missed;
}

void Figures::Print(std::string_view name, double value, std::string_view unit) {
  std::printf("%s\n", Head(name, value, unit).c_str());
  std::fflush(stdout);
}

}  // namespace ox::bench
