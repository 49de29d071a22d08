// Windows-1252 to UTF-8 and back.
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "platform/utf8.h"

namespace ox {
namespace {

constexpr char32_t kFirstSpecial = 0x80;   // from here on Windows-1252 differs from Latin-1
constexpr char32_t kFirstLatin1 = 0xA0;    // from here on code and byte are equal again
constexpr char32_t kBeyondLatin1 = 0x100;  // from here on no byte has the number of the code
constexpr char kUnknown = '?';

/// The characters of the bytes 0x80 to 0x9F; an open code stands for itself.
constexpr std::array<char32_t, kFirstLatin1 - kFirstSpecial> kSpecials = {
    U'\u20AC', 0x81,      U'\u201A', U'\u0192', U'\u201E', U'\u2026', U'\u2020', U'\u2021',  //
    U'\u02C6', U'\u2030', U'\u0160', U'\u2039', U'\u0152', 0x8D,      U'\u017D', 0x8F,       //
    0x90,      U'\u2018', U'\u2019', U'\u201C', U'\u201D', U'\u2022', U'\u2013', U'\u2014',  //
    U'\u02DC', U'\u2122', U'\u0161', U'\u203A', U'\u0153', 0x9D,      U'\u017E', U'\u0178'};

constexpr bool IsSpecial(char32_t code) {
  return code >= kFirstSpecial && code < kFirstLatin1;
}

char32_t CodeOf(char byte) {
  const char32_t value = ByteValue(byte);
  return IsSpecial(value) ? kSpecials[value - kFirstSpecial] : value;
}

/// The byte of a character, or "?" when it has none.
char ByteOfCode(char32_t code) {
  if (code < kBeyondLatin1 && !IsSpecial(code)) return ByteOf(code);
  const auto* const found = std::find(kSpecials.begin(), kSpecials.end(), code);
  if (found == kSpecials.end()) return kUnknown;
  return ByteOf(kFirstSpecial + static_cast<unsigned>(found - kSpecials.begin()));
}

/// A combining mark of Unicode, and the letters of Latin-1 without it and with it.
struct CombiningMark {
  char32_t code;
  std::u32string_view letters;
  std::u32string_view marked;
};

constexpr CombiningMark kCombiningMarks[] = {
    {0x300, U"AEIOUaeiou", U"ÀÈÌÒÙàèìòù"},      // grave accent
    {0x301, U"AEIOUYaeiouy", U"ÁÉÍÓÚÝáéíóúý"},  // acute accent
    {0x302, U"AEIOUaeiou", U"ÂÊÎÔÛâêîôû"},      // circumflex
    {0x303, U"ANOano", U"ÃÑÕãñõ"},              // tilde
    {0x308, U"AEIOUaeiouy", U"ÄËÏÖÜäëïöüÿ"},    // umlaut
    {0x30A, U"Aa", U"Åå"},                      // ring
    {0x327, U"Cc", U"Çç"},                      // cedilla
};

/// The letter that a letter and a combining mark make; nothing when Latin-1 has none.
std::optional<char> Composed(char letter, char32_t mark) {
  for (const CombiningMark& combining : kCombiningMarks) {
    if (combining.code != mark) continue;
    const std::size_t found = combining.letters.find(ByteValue(letter));
    if (found == std::u32string_view::npos) break;
    return ByteOf(combining.marked[found]);
  }
  return std::nullopt;
}

/// Bytes of the first `count` characters of a valid UTF-8 text.
std::size_t LengthOf(std::size_t count, std::string_view text) {
  std::size_t length = 0;
  for (; count > 0; --count) length += DecodeFirst(text.substr(length))->length;
  return length;
}

}  // namespace

std::string ToText(BytesView bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t plain = AsciiLength(bytes);
    text += bytes.substr(0, plain);
    bytes.remove_prefix(plain);
    if (bytes.empty()) break;
    AppendUtf8(text, CodeOf(bytes.front()));
    bytes.remove_prefix(1);
  }
  return text;
}

Bytes ToBytes(std::string_view text) {
  Bytes bytes;
  bytes.reserve(text.size());
  while (!text.empty()) {
    const std::size_t plain = AsciiLength(text);
    bytes += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    // A byte that begins no character counts as one bad character; the next byte may begin a good one.
    const std::optional<Utf8Character> character = DecodeFirst(text);
    bytes += character ? ByteOfCode(character->code) : kUnknown;
    text.remove_prefix(character ? character->length : 1);
  }
  return bytes;
}

FileText::FileText(Bytes content, char placeholder) : placeholder_(placeholder) {
  if (AsciiLength(content) == content.size() || !IsUtf8(content)) {
    characters_ = std::move(content);
    return;
  }
  Read(WithoutByteOrderMark(content));
}

void FileText::Read(std::string_view text) {
  characters_.reserve(text.size());
  while (!text.empty()) {
    const std::size_t plain = AsciiLength(text);
    characters_ += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const Utf8Character character = *DecodeFirst(text);
    const auto composed = characters_.empty() ? std::nullopt : Composed(characters_.back(), character.code);
    if (composed) {
      characters_.back() = *composed;
    } else if (character.code >= kFirstLatin1 && character.code < kBeyondLatin1) {
      characters_ += ByteOf(character.code);
    } else {
      characters_ += placeholder_;
      foreign_ += text.substr(0, character.length);
    }
    text.remove_prefix(character.length);
  }
}

std::string FileText::Written(std::size_t start, std::size_t length) const {
  const auto before = static_cast<std::size_t>(std::count(
      characters_.begin(), characters_.begin() + static_cast<std::ptrdiff_t>(start), placeholder_));
  std::string_view foreign = foreign_;
  foreign.remove_prefix(LengthOf(before, foreign));
  std::string text;
  for (const char character : BytesView(characters_).substr(start, length)) {
    if (character != placeholder_) {
      AppendUtf8(text, CodeOf(character));
      continue;
    }
    const std::size_t bytes = LengthOf(1, foreign);
    text += foreign.substr(0, bytes);
    foreign.remove_prefix(bytes);
  }
  return text;
}

}  // namespace ox
