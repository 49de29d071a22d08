// Windows-1252 to UTF-8 and back.
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace ox {
namespace {

constexpr char32_t kFirstSpecial = 0x80;   // Windows-1252 leaves Latin-1 only from here
constexpr char32_t kFirstLatin1 = 0xA0;    // up to here; from here on code and byte are equal again
constexpr char32_t kBeyondLatin1 = 0x100;  // first code that no byte has by its own number
constexpr char kUnknown = '?';
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

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

/// No character of Windows-1252 needs more than three bytes.
void AppendUtf8(std::string& text, char32_t code) {
  if (code < 0x80) {
    text += ByteOf(code);
  } else if (code < 0x800) {
    text += ByteOf(0xC0 | (code >> 6));
    text += ByteOf(0x80 | (code & 0x3F));
  } else {
    text += ByteOf(0xE0 | (code >> 12));
    text += ByteOf(0x80 | ((code >> 6) & 0x3F));
    text += ByteOf(0x80 | (code & 0x3F));
  }
}

/// The number of ASCII characters at the start; eight at a time, since tables are mostly ASCII and may be
/// large.
std::size_t AsciiLength(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t length = 0;
  for (std::uint64_t block = 0; text.size() - length >= sizeof block; length += sizeof block) {
    std::memcpy(&block, text.data() + length, sizeof block);
    if ((block & kHighBits) != 0) break;
  }
  while (length < text.size() && ByteValue(text[length]) < 0x80) ++length;
  return length;
}

struct Character {
  char32_t code;
  std::size_t length;  // bytes
};

/// A lead byte's share of the code, and the smallest code that may be written with so many bytes.
struct Lead {
  unsigned bits;
  std::size_t length;
  char32_t smallest;
};

std::optional<Lead> LeadOf(unsigned byte) {
  if ((byte & 0xE0) == 0xC0) return Lead{byte & 0x1F, 2, 0x80};
  if ((byte & 0xF0) == 0xE0) return Lead{byte & 0x0F, 3, 0x800};
  if ((byte & 0xF8) == 0xF0) return Lead{byte & 0x07, 4, 0x10000};
  return std::nullopt;
}

/// The character outside ASCII with which the text begins; nothing when its UTF-8 is broken.
std::optional<Character> DecodeFirst(std::string_view text) {
  const std::optional<Lead> lead = LeadOf(ByteValue(text.front()));
  if (!lead || text.size() < lead->length) return std::nullopt;
  char32_t code = lead->bits;
  for (const char byte : text.substr(1, lead->length - 1)) {
    if ((ByteValue(byte) & 0xC0) != 0x80) return std::nullopt;
    code = (code << 6) | (ByteValue(byte) & 0x3F);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < lead->smallest || surrogate || code > 0x10FFFF) return std::nullopt;
  return Character{code, lead->length};
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
    const std::optional<Character> character = DecodeFirst(text);
    bytes += character ? ByteOfCode(character->code) : kUnknown;
    text.remove_prefix(character ? character->length : 1);
  }
  return bytes;
}

bool IsUtf8(std::string_view text) {
  for (text.remove_prefix(AsciiLength(text)); !text.empty(); text.remove_prefix(AsciiLength(text))) {
    const std::optional<Character> character = DecodeFirst(text);
    if (!character) return false;
    text.remove_prefix(character->length);
  }
  return true;
}

Bytes FileTextToBytes(Bytes content) {
  if (AsciiLength(content) == content.size() || !IsUtf8(content)) return content;
  std::string_view text = content;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return ToBytes(text);
}

}  // namespace ox
