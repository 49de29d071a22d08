// Characters that have come from the port and wait to be consumed one by one.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// A queue of characters; taking one costs the same, however many are in it. It counts what is taken.
class ReceiveBuffer {
 public:
  bool Empty() const { return next_ == waiting_.size(); }

  void Append(BytesView arrived) {
    if (Empty()) Drop();
    waiting_ += arrived;
  }

  // Must not be called on an empty buffer.

  char First() const { return waiting_[next_]; }
  char TakeFirst() {
    ++taken_;
    return waiting_[next_++];
  }

  /// Characters taken since the last Clear.
  std::size_t Taken() const { return taken_; }

  void Clear() {
    Drop();
    taken_ = 0;
  }

 private:
  void Drop() {
    waiting_.clear();
    next_ = 0;
  }

  Bytes waiting_;
  std::size_t next_ = 0;
  std::size_t taken_ = 0;
};

}  // namespace ox
