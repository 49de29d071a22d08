// What a USB adapter adds to a line: it holds characters for the PC back and hands them on together.
#pragma once

#include <optional>
#include <utility>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// Hands on what has come, all of it together, once the first of it has waited for the latency. With none
/// everything is handed on at once.
class UsbAdapter {
 public:
  explicit UsbAdapter(Seconds latency) : latency_(latency) {}

  void Receive(BytesView bytes, Seconds now) {
    if (waiting_.empty()) due_ = now + latency_;
    waiting_ += bytes;
  }
  /// When Take is wanted next; nothing while nothing waits.
  std::optional<Seconds> Next() const { return waiting_.empty() ? std::nullopt : std::optional(due_); }
  /// Removes and returns what is handed on by now.
  Bytes Take(Seconds now) { return now < due_ ? Bytes() : std::exchange(waiting_, {}); }
  /// Forgets what waits.
  void Drop() { waiting_.clear(); }

 private:
  Seconds latency_;
  Bytes waiting_;
  Seconds due_ = 0;
};

}  // namespace ox::sim
