// The checks of values, character by character.
#include "tables/table_characters.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "tables/device_characters.h"
#include "tables/packed_tables.h"

namespace ox {

Bytes CheckTableText(const TableText& tableText, BytesView value, int line, TableMessages& messages) {
  Bytes translated;
  for (std::size_t at = 0; at < value.size(); ++at) {
    const char shown = DeviceCharacter(value[at]);
    if (!DeviceShows(shown)) {
      const std::string refused = tableText.Written(value.substr(at, 1));
      messages.ShowFault(line, ", " + refused + " nicht erlaubt!", tableText);
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
