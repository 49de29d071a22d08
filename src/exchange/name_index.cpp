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

}  // namespace

NameIndex::NameIndex(BytesView tableImage) {
  for (std::size_t position = 0; position < tableImage.size();) {
    const BytesView entry = tableImage.substr(position + 1, kNameEnd);
    const BytesView number = entry.substr(0, kPointNumberLength);
    if (!StandsBeforeEntry(tableImage[position]) || !IsNumber(number)) {
      ++position;
      continue;
    }
    // Of several points with one number the first counts. A name that is cut off by the table's end does not
    // count.
    if (entry.size() == kNameEnd) names_.emplace(number, FileCharacters(entry.substr(kNameOffset)));
    position += kEntryLength;
  }
}

BytesView NameIndex::Find(BytesView number) const {
  const auto found = names_.find(number);
  return found == names_.end() ? BytesView() : BytesView(found->second);
}

}  // namespace ox
