// Matching names against patterns, one character after the other.
#include "chooser/file_pattern.h"

#include <algorithm>
#include <cstddef>

namespace ox {
namespace {

constexpr char kSeparator = ';';
constexpr char kAnyCharacters = '*';
constexpr char kOneCharacter = '?';
constexpr std::string_view kAllFiles = "*.*";

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Bytes of the first character of a UTF-8 text that is not empty.
std::size_t FirstLength(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) ++length;
  return length;
}

/// A mismatch behind a "*" lets that "*" take one character more. Only the last one matters, so that no
/// pattern takes longer than name times pattern.
bool MatchesOne(std::string_view name, std::string_view pattern) {
  bool starred = false;
  std::string_view nameAtStar;
  std::string_view patternAtStar;
  while (!name.empty()) {
    if (pattern.starts_with(kAnyCharacters)) {
      pattern.remove_prefix(1);
      starred = true;
      nameAtStar = name;
      patternAtStar = pattern;
    } else if (pattern.starts_with(kOneCharacter)) {
      pattern.remove_prefix(1);
      name.remove_prefix(FirstLength(name));
    } else if (!pattern.empty() && Lower(pattern.front()) == Lower(name.front())) {
      pattern.remove_prefix(1);
      name.remove_prefix(1);
    } else if (starred) {
      nameAtStar.remove_prefix(FirstLength(nameAtStar));
      name = nameAtStar;
      pattern = patternAtStar;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(kAnyCharacters) == std::string_view::npos;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(first, last - first + 1);
}

}  // namespace

bool MatchesPattern(std::string_view name, std::string_view patterns) {
  if (WithoutBlanks(patterns).empty()) return true;
  while (!patterns.empty()) {
    const std::size_t end = std::min(patterns.find(kSeparator), patterns.size());
    const std::string_view pattern = WithoutBlanks(patterns.substr(0, end));
    if (!pattern.empty() && (pattern == kAllFiles || MatchesOne(name, pattern))) return true;
    patterns.remove_prefix(std::min(end + 1, patterns.size()));
  }
  return false;
}

}  // namespace ox
