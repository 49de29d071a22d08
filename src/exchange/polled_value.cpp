// The columns of a record.
#include "exchange/polled_value.h"

#include <algorithm>
#include <cstddef>

#include "tables/packed_tables.h"

namespace ox {
namespace {

// Columns of a record that belongs to a measuring point.
constexpr std::size_t kNumberEndOffset = kPointNumberLength;
constexpr char kNumberEnd = ':';
constexpr std::size_t kParameterOffset = 10;
constexpr std::size_t kMarkOffset = 15;
constexpr std::size_t kValueOffset = 16;
constexpr std::size_t kUnitOffset = 23;  // a blank; the unit behind it comes with "Abruf Z" only

BytesView Trimmed(BytesView text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == BytesView::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

BytesView Column(BytesView record, std::size_t offset, std::size_t end) {
  return offset < record.size() ? Trimmed(record.substr(offset, end - offset)) : BytesView();
}

}  // namespace

PolledValue ReadRecord(BytesView record, const NameIndex& names, BytesView office) {
  PolledValue value;
  if (record.size() <= kNumberEndOffset || record[kNumberEndOffset] != kNumberEnd) {
    value.value = Trimmed(record);
    return value;
  }
  value.point = record.substr(0, kPointNumberLength);
  value.parameter = Column(record, kParameterOffset, kParameterOffset + kParameterNumberLength);
  value.mark = Column(record, kMarkOffset, kMarkOffset + 1);
  // A value that is too long for its column is not cut: that would make another number of it.
  value.value = Column(record, kValueOffset, std::min(record.find(' ', kUnitOffset), record.size()));
  value.name = Trimmed(names.Find(value.point));
  const BytesView known = names.OfficeOf(value.point);
  value.office = known.empty() ? office : known;
  return value;
}

bool IsNumber(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  if (std::ranges::count(text, '.') > 1) return false;
  return text.find_first_of("0123456789") != std::string_view::npos &&
         text.find_first_not_of("0123456789.") == std::string_view::npos;
}

}  // namespace ox
