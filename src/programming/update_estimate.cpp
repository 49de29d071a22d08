// The rate of the blocks, and the rest that follows from it.
#include "programming/update_estimate.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "programming/block_frame.h"
#include "programming/loader_link.h"

namespace ox {
namespace {

constexpr Seconds kDay = 24 * 60 * 60;

/// The requests behind the last block: verification, taking over, leaving the loader.
constexpr Seconds kRequestsBehind = 3;

/// A request that took longer than line and so much had the device at work.
constexpr Seconds kLongestTurnaround = 0.1F;

/// So many blocks are remembered in the rate.
constexpr std::size_t kMemory = 32;
/// A block counts in the rate at most so many times as long as those before: one that was late does not
/// make all others late.
constexpr Seconds kLongest = 2;
/// The rest falls at most so many times as fast as time passes.
constexpr Seconds kFastest = 3;

/// The clock falls back to 0 at midnight.
Seconds Since(Seconds start, Seconds now) {
  return now < start ? now + kDay - start : now - start;
}

}  // namespace

void UpdateEstimate::Step(std::string_view what, std::size_t blocks, Seconds now) {
  if (!what_.empty() && blocks_ == 0) quickest_ = std::min(quickest_, Since(stepBegan_, now));
  stepBegan_ = now;
  if (what != what_) whatBegan_ = now;
  what_ = what;
  left_ = blocks;
  if (blocks == 0) return;
  blocks_ = blocks;
  lastBlock_ = now;
  expected_ = LineTime(kBlockSize) + Turnaround();
  rate_ = expected_;
  rest_ = RestAt(rate_);
  shown_ = static_cast<int>(std::ceil(rest_));
}

Seconds UpdateEstimate::Turnaround() const {
  return std::clamp(quickest_ - LineTime(0), 0.0F, kLongestTurnaround);
}

Seconds UpdateEstimate::RestAt(Seconds rate) const {
  return static_cast<Seconds>(left_) * rate + kRequestsBehind * (LineTime(0) + Turnaround());
}

void UpdateEstimate::BlockSent(Seconds now) {
  if (left_ == 0) return;
  --left_;
  const Seconds took = Since(std::exchange(lastBlock_, now), now);
  const std::size_t counted = std::min(blocks_ - left_, kMemory);
  rate_ += (std::min(took, kLongest * rate_) - rate_) / static_cast<Seconds>(counted + 1);
  const Seconds least = rest_ - kFastest * std::max(took, expected_);
  const Seconds most = rest_ + std::max(took - expected_, 0.0F);
  rest_ = std::clamp(RestAt(rate_), least, most);
}

int UpdateEstimate::Percent() const {
  constexpr std::size_t kWhole = 100;
  return blocks_ == 0 ? 0 : static_cast<int>((blocks_ - left_) * kWhole / blocks_);
}

int UpdateEstimate::SecondsGone(Seconds now) const {
  return static_cast<int>(Since(whatBegan_, now));
}

int UpdateEstimate::SecondsLeft(Seconds now) {
  const Seconds rest = rest_ - std::min(Since(lastBlock_, now), rate_);
  // It grows only once the rest is a whole second more, so that it does not go to and fro.
  const int least = std::max(static_cast<int>(std::floor(rest)), 1);
  const int most = std::max(static_cast<int>(std::ceil(rest)), 1);
  shown_ = std::clamp(shown_, least, most);
  return shown_;
}

}  // namespace ox
