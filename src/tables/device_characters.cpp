// The one table of the device's own characters.
#include "tables/device_characters.h"

#include <algorithm>

namespace ox {
namespace {

struct Translation {
  char file;  // Windows-1252
  char device;
};

/// A code that the device shares with another character is shown as the first of the two. 83 and 85 hex are
/// the letters of E2 and E0 in the DOS code page, which old table files still hold.
constexpr Translation kTranslations[] = {
    {'\xE2', 28},    // a with circumflex
    {'\x83', 28},    // a with circumflex
    {'\xE0', 29},    // a with grave accent
    {'\x85', 29},    // a with grave accent
    {'\xB0', 31},    // degree sign
    {'\xC4', '['},   // A umlaut
    {'\xD6', '\\'},  // O umlaut
    {'\xDC', ']'},   // U umlaut
    {'\xDF', '~'},   // sharp s
    {'\xE4', '{'},   // a umlaut
    {'\xF6', '|'},   // o umlaut
    {'\xFC', '}'},   // u umlaut
};

constexpr unsigned kLowestGlyph = 28;
constexpr unsigned kHighestGlyph = 126;
constexpr BytesView kMissing = "\"$&'()^`";

}  // namespace

char DeviceCharacter(char fileCharacter) {
  for (const auto& [file, device] : kTranslations) {
    if (file == fileCharacter) return device;
  }
  return fileCharacter;
}

char FileCharacter(char deviceCharacter) {
  for (const auto& [file, device] : kTranslations) {
    if (device == deviceCharacter) return file;
  }
  return deviceCharacter;
}

Bytes FileCharacters(BytesView deviceText) {
  Bytes text(deviceText);
  std::ranges::transform(text, text.begin(), FileCharacter);
  return text;
}

bool DeviceShows(char deviceCharacter) {
  const unsigned code = ByteValue(deviceCharacter);
  return code >= kLowestGlyph && code <= kHighestGlyph && kMissing.find(deviceCharacter) == BytesView::npos;
}

}  // namespace ox
