// Matching names against patterns, one character after the other.
#include "chooser/file_pattern.h"

#include <algorithm>
#include <cstddef>

#include "platform/bytes.h"
#include "platform/utf8.h"

namespace ox {
namespace {

constexpr char kSeparator = ';';
constexpr char kAnyCharacters = '*';
constexpr char kOneCharacter = '?';
constexpr std::string_view kAllFiles = "*.*";

/// The first character of a UTF-8 text that is not empty; a byte that is none counts as one.
Utf8Character First(std::string_view text) {
  const Utf8Character byte{ByteValue(text.front()), 1};
  return byte.code < 0x80 ? byte : DecodeFirst(text).value_or(byte);
}

/// A character's code, the same for both cases of a letter of Latin-1.
char32_t Folded(char32_t code) {
  constexpr char32_t kCaseDistance = 0x20;  // from an upper letter to its lower one
  constexpr char32_t kTimesSign = 0xD7;     // stands among the upper letters
  const bool upper = (code >= U'A' && code <= U'Z') || (code >= 0xC0 && code <= 0xDE && code != kTimesSign);
  return upper ? code + kCaseDistance : code;
}

bool BeginAlike(std::string_view name, std::string_view pattern) {
  return Folded(First(name).code) == Folded(First(pattern).code);
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
      name.remove_prefix(First(name).length);
    } else if (!pattern.empty() && BeginAlike(name, pattern)) {
      pattern.remove_prefix(First(pattern).length);
      name.remove_prefix(First(name).length);
    } else if (starred) {
      nameAtStar.remove_prefix(First(nameAtStar).length);
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
