// Translation from Windows-1252 to the device's characters, and the tests for digits.
#include "tables/table_characters.h"

#include <algorithm>

#include "tables/line_error.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

// Windows-1252 on the left. 131 and 133 are the letters of 226 and 224 in the DOS code page, which old table
// files still hold.
constexpr unsigned DeviceCode(unsigned code) {
  switch (code) {
    case 131:
    case 226:
      return 28;  // a with circumflex
    case 133:
    case 224:
      return 29;  // a with grave accent
    case 176:
      return 31;  // degree sign
    case 196:
      return '[';  // A umlaut
    case 214:
      return '\\';  // O umlaut
    case 220:
      return ']';  // U umlaut
    case 223:
      return '~';  // sharp s
    case 228:
      return '{';  // a umlaut
    case 246:
      return '|';  // o umlaut
    case 252:
      return '}';  // u umlaut
    default:
      return code;
  }
}

constexpr unsigned kLowestGlyph = 28;
constexpr unsigned kHighestGlyph = 126;

constexpr bool DeviceShows(unsigned code) {
  constexpr BytesView kMissing = "\"$&'()^`";
  return code >= kLowestGlyph && code <= kHighestGlyph && kMissing.find(ByteOf(code)) == BytesView::npos;
}

}  // namespace

Bytes CheckTableText(BytesView table_text, BytesView value, int line, TableMessages& messages) {
  Bytes translated;
  for (const char character : value) {
    const unsigned code = DeviceCode(ByteValue(character));
    if (!DeviceShows(code)) {
      ReportLineError(line, Bytes(", ") + character + " nicht erlaubt!", table_text, messages);
      return {};
    }
    translated.push_back(ByteOf(code));
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
