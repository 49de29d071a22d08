// Collecting names from a packed table, in the characters that the user wrote them with.
#include "exchange/name_index.h"

#include <algorithm>

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

/// The table holds the device's codes, DIN 66003 and three glyphs of its own; the reverse of CheckTableText.
char ShownCharacter(char c) {
  switch (c) {
    case 28:
      return '\xE2';  // a with circumflex
    case 29:
      return '\xE0';  // a with grave accent
    case 31:
      return '\xB0';  // degree sign
    case '[':
      return '\xC4';  // A umlaut
    case '\\':
      return '\xD6';  // O umlaut
    case ']':
      return '\xDC';  // U umlaut
    case '{':
      return '\xE4';  // a umlaut
    case '|':
      return '\xF6';  // o umlaut
    case '}':
      return '\xFC';  // u umlaut
    case '~':
      return '\xDF';  // sharp s
    default:
      return c;
  }
}

Bytes ShownName(BytesView name) {
  Bytes shown(name);
  std::transform(shown.begin(), shown.end(), shown.begin(), ShownCharacter);
  return shown;
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
    // The first of several points with one number counts, and a name cut off by the table's end does not.
    if (entry.size() == kNameEnd) names_.emplace(number, ShownName(entry.substr(kNameOffset)));
    position += kEntryLength;
  }
}

BytesView NameIndex::Find(BytesView number) const {
  const auto found = names_.find(number);
  return found == names_.end() ? BytesView() : BytesView(found->second);
}

}  // namespace ox
