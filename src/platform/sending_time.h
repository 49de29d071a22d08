// How long a line needs for what was written to it.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>

namespace ox {

/// Hosts and adapters take bytes faster than the line sends them, and tell at most in part how many wait.
class SendingTime {
 public:
  using Clock = std::chrono::steady_clock;
  using TimePoint = Clock::time_point;

  static constexpr std::chrono::milliseconds kGrace{400};  // for adapters that pass data on late

  explicit SendingTime(std::chrono::nanoseconds character) : character_(character) {}

  /// When the line has sent all that was written.
  TimePoint End() const { return end_; }
  /// When it would have sent so many bytes more.
  TimePoint EndWith(std::size_t bytes) const { return std::max(end_, Clock::now()) + character_ * bytes; }

  void NoteWritten(std::size_t bytes) { end_ = EndWith(bytes); }
  /// An answer shows that the request was sent, even if the line should still be sending it (a virtual line
  /// can be faster than its settings say). What is left takes no longer than the grace.
  void NoteAnswer() { end_ = std::min(end_, Clock::now() + kGrace); }

 private:
  std::chrono::nanoseconds character_;
  TimePoint end_ = {};
};

}  // namespace ox
