// Bounds-checked steps through a packed table.
#include "tables/packed_cursor.h"

namespace ox {

std::optional<BytesView> PackedCursor::TakeField(char end) {
  const std::size_t found = table_.find(end, position_);
  if (found == BytesView::npos) return std::nullopt;
  const BytesView field = table_.substr(position_, found - position_);
  position_ = found + 1;
  return field;
}

BytesView PackedCursor::Take(std::size_t length) {
  const BytesView taken = table_.substr(position_, length);
  position_ += taken.size();
  return taken;
}

bool PackedCursor::SkipToNulPair() {
  const std::size_t found = table_.find(kNulPair, position_);
  if (found == BytesView::npos) return false;
  position_ = found + kNulPair.size();
  return true;
}

bool PackedCursor::Skip(BytesView expected) {
  if (table_.substr(position_, expected.size()) != expected) return false;
  position_ += expected.size();
  return true;
}

}  // namespace ox
