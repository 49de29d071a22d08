// Characters that have come from the port and wait to be consumed one by one.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// A queue of characters; taking one costs the same however many wait behind it.
class ReceiveBuffer {
 public:
  bool Empty() const { return next_ == waiting_.size(); }

  void Append(BytesView arrived) {
    if (Empty()) Clear();
    waiting_ += arrived;
  }

  // Not on an empty buffer.

  char First() const { return waiting_[next_]; }
  char TakeFirst() { return waiting_[next_++]; }

  void Clear() {
    waiting_.clear();
    next_ = 0;
  }

 private:
  Bytes waiting_;
  std::size_t next_ = 0;
};

}  // namespace ox
