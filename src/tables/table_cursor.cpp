// The scanner for control marks and the reader of framed values.
#include "tables/table_cursor.h"

#include <algorithm>

#include "platform/line_ends.h"
#include "tables/table_text.h"

namespace ox {
namespace {

constexpr char kSlash = '/';
constexpr std::size_t kMarkWidth = 2;  // from a mark's opening slash to its closing one

}  // namespace

char TableCursor::FindControlMark() {
  for (; position_ + kMarkWidth < text_.size(); ++position_) {
    if (text_[position_] == kSlash && text_[position_ + kMarkWidth] == kSlash) {
      position_ += kMarkWidth;
      return text_[position_ - 1];
    }
    if (text_[position_] == kCr) ++line_;
  }
  return TableText::kEndMark;
}

BytesView TableCursor::ReadFramedValue() {
  ++position_;
  if (position_ >= text_.size() || text_[position_] != kQuote) return {};
  const std::size_t first = position_ + 1;
  position_ = std::min(text_.find_first_of("\"\r", first), text_.size());
  if (position_ == text_.size() || text_[position_] != kQuote) return {};
  return text_.substr(first, position_ - first);
}

}  // namespace ox
