// What a simulated device is about to say, and when.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// Pieces of output in the order of their times.
class OutputQueue {
 public:
  /// Adds bytes that are due at a time; never earlier than what was added before.
  void Add(Seconds due, BytesView bytes);
  /// When the first piece is due; nothing when the queue is empty.
  std::optional<Seconds> Next() const;
  /// Removes and returns what is due by now, at most so many bytes of it.
  Bytes Take(Seconds now, std::size_t most);
  /// Forgets what has not been taken.
  void Clear() { pieces_.clear(); }

 private:
  struct Piece {
    Seconds due;
    Bytes bytes;
  };
  std::deque<Piece> pieces_;
};

}  // namespace ox::sim
