// Translation from Windows-1252 to the device's characters, and the tests for digits.
#include "tables/table_characters.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "tables/line_error.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

struct Translation {
  unsigned file_code;  // Windows-1252
  char device_code;
};

// 131 and 133 are the letters of 226 and 224 in the DOS code page, which old table files still hold.
constexpr Translation kTranslations[] = {
    {131, 28},    // a with circumflex
    {226, 28},    // a with circumflex
    {133, 29},    // a with grave accent
    {224, 29},    // a with grave accent
    {176, 31},    // degree sign
    {196, '['},   // A umlaut
    {214, '\\'},  // O umlaut
    {220, ']'},   // U umlaut
    {223, '~'},   // sharp s
    {228, '{'},   // a umlaut
    {246, '|'},   // o umlaut
    {252, '}'},   // u umlaut
};

constexpr char DeviceCharacter(char character) {
  for (const Translation& translation : kTranslations) {
    if (translation.file_code == ByteValue(character)) return translation.device_code;
  }
  return character;
}

constexpr unsigned kLowestGlyph = 28;
constexpr unsigned kHighestGlyph = 126;

constexpr bool DeviceShows(char character) {
  constexpr BytesView kMissing = "\"$&'()^`";
  return ByteValue(character) >= kLowestGlyph && ByteValue(character) <= kHighestGlyph &&
         kMissing.find(character) == BytesView::npos;
}

}  // namespace

Bytes CheckTableText(const TableText& tableText, BytesView value, int line, TableMessages& messages) {
  Bytes translated;
  for (std::size_t at = 0; at < value.size(); ++at) {
    const char shown = DeviceCharacter(value[at]);
    if (!DeviceShows(shown)) {
      const std::string refused = tableText.Written(value.substr(at, 1));
      ReportLineError(line, ", " + refused + " nicht erlaubt!", tableText, messages);
      return {};
    }
    translated.push_back(shown);
  }
  return translated;
}

BytesView DigitsOnly(BytesView value) {
  const bool digits = std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; });
  return digits ? value : BytesView();
}

bool IsParameterNumber(BytesView value) {
  // Strings of digits of one length are in the order of their numbers.
  return value.size() == kParameterNumberLength && !DigitsOnly(value).empty() &&
         value <= kHighestParameterNumber;
}

}  // namespace ox
