// Keeping output until it is due.
#include "simulator/line/output_queue.h"

#include <algorithm>

namespace ox::sim {

void OutputQueue::Add(Seconds due, BytesView bytes) {
  if (bytes.empty()) return;
  if (!pieces_.empty()) due = std::max(due, pieces_.back().due);
  pieces_.push_back({due, Bytes(bytes)});
}

std::optional<Seconds> OutputQueue::Next() const {
  if (pieces_.empty()) return std::nullopt;
  return pieces_.front().due;
}

Bytes OutputQueue::Take(Seconds now, std::size_t most) {
  Bytes taken;
  while (taken.size() < most && !pieces_.empty() && pieces_.front().due <= now) {
    Bytes& piece = pieces_.front().bytes;
    const size_t count = std::min(most - taken.size(), piece.size());
    taken.append(piece, 0, count);
    piece.erase(0, count);
    if (piece.empty()) pieces_.pop_front();
  }
  return taken;
}

}  // namespace ox::sim
