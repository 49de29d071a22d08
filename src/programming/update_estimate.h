// How far an update is and how long it still takes: worked out from what its observer is told, for a window
// or a console. It reads no clock; every `now` is seconds since midnight (platform/clock.h).
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

#include "platform/clock.h"

namespace ox {

/// The rest is known while blocks are sent. It begins with what line and replies need for them, by the speed
/// of the line and the quickest request so far; the rate at which they pass takes the place of that. The
/// figure is a whole number of seconds and does not jump: it grows only by as much as blocks have taken
/// longer than expected, and stands still while one is awaited.
class UpdateEstimate {
 public:
  /// A step begins, see UpdateObserver::Step. Steps in a row that are called the same are one.
  void Step(std::string_view what, std::size_t blocks, Seconds now);
  /// The device has taken the next block.
  void BlockSent(Seconds now);

  /// What the present step is called.
  const std::string& What() const { return what_; }
  /// Whether the present step sends blocks.
  bool Sends() const { return left_ > 0; }
  /// How many of the blocks were sent, 0 to 100; it stays in the steps behind them.
  int Percent() const;
  /// Seconds since the step began, whole ones.
  int SecondsGone(Seconds now) const;
  /// Seconds until the update ends, rounded up, at least 1. Only while blocks are sent.
  int SecondsLeft(Seconds now);

 private:
  /// What replies add to the time of the line.
  Seconds Turnaround() const;
  /// What is left from the last block on at so many seconds for each block.
  Seconds RestAt(Seconds rate) const;

  std::string what_;       // empty before the first step
  Seconds whatBegan_ = 0;  // of all steps in a row that are called so
  Seconds stepBegan_ = 0;
  // Of the steps without blocks: each is a request at least.
  Seconds quickest_ = std::numeric_limits<Seconds>::infinity();
  std::size_t blocks_ = 0;
  std::size_t left_ = 0;
  Seconds lastBlock_ = 0;
  Seconds expected_ = 0;  // seconds for each block, by line and replies
  Seconds rate_ = 0;      // the same, measured
  Seconds rest_ = 0;      // at lastBlock_
  int shown_ = 0;         // the last figure
};

}  // namespace ox
