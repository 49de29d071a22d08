// Collecting names from a packed table, in the characters that the user wrote them with.
#include "exchange/name_index.h"

#include "tables/device_characters.h"
#include "tables/packed_tables.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

/// Both from the first character of an entry.
constexpr std::size_t kNameOffset = kPointNumberLength + 2 * kDifferenceLength;
constexpr std::size_t kNameEnd = kNameOffset + kPointNameLength;

bool StandsBeforeEntry(char c) {
  return c == kNul || c == kEntryEnd;
}

bool IsNumber(BytesView text) {
  return text.size() == kPointNumberLength && !DigitsOnly(text).empty();
}

/// The office code that ends a part of the table; empty when it ends otherwise.
BytesView OfficeBefore(BytesView table) {
  if (table.size() <= kOfficeCodeLength) return {};
  const std::size_t start = table.size() - kOfficeCodeLength;
  return table[start - 1] == kNul ? DigitsOnly(table.substr(start)) : BytesView();
}

}  // namespace

NameIndex::NameIndex(BytesView tableImage) {
  Bytes office;
  for (std::size_t position = 0; position < tableImage.size();) {
    const BytesView entry = tableImage.substr(position + 1, kNameEnd);
    const BytesView number = entry.substr(0, kPointNumberLength);
    if (!StandsBeforeEntry(tableImage[position]) || !IsNumber(number)) {
      ++position;
      continue;
    }
    if (tableImage[position] == kNul) office = OfficeBefore(tableImage.substr(0, position));
    // Of several points with one number the first counts. A name that is cut off by the table's end does not
    // count.
    if (entry.size() == kNameEnd) {
      points_.emplace(number, Point{FileCharacters(entry.substr(kNameOffset)), office});
    }
    position += kEntryLength;
  }
}

BytesView NameIndex::Find(BytesView number) const {
  const auto found = points_.find(number);
  return found == points_.end() ? BytesView() : BytesView(found->second.name);
}

BytesView NameIndex::OfficeOf(BytesView number) const {
  const auto found = points_.find(number);
  return found == points_.end() ? BytesView() : BytesView(found->second.office);
}

}  // namespace ox
