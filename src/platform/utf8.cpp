// Reading and writing UTF-8.
#include "platform/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/bytes.h"

namespace ox {
namespace {

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

}  // namespace

std::string_view WithoutByteOrderMark(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  return text;
}

std::optional<Utf8Character> DecodeFirst(std::string_view text) {
  const std::optional<Lead> lead = LeadOf(ByteValue(text.front()));
  if (!lead || text.size() < lead->length) return std::nullopt;
  char32_t code = lead->bits;
  for (const char byte : text.substr(1, lead->length - 1)) {
    if ((ByteValue(byte) & 0xC0) != 0x80) return std::nullopt;
    code = (code << 6) | (ByteValue(byte) & 0x3F);
  }
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < lead->smallest || surrogate || code > 0x10FFFF) return std::nullopt;
  return Utf8Character{code, lead->length};
}

std::size_t AsciiLength(std::string_view text) {
  // Eight at a time, since tables are mostly ASCII and may be large.
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t length = 0;
  for (std::uint64_t block = 0; text.size() - length >= sizeof block; length += sizeof block) {
    std::memcpy(&block, text.data() + length, sizeof block);
    if ((block & kHighBits) != 0) break;
  }
  while (length < text.size() && ByteValue(text[length]) < 0x80) ++length;
  return length;
}

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (ByteValue(c) & 0xC0) != 0x80; }));
}

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

bool IsUtf8(std::string_view text) {
  for (text.remove_prefix(AsciiLength(text)); !text.empty(); text.remove_prefix(AsciiLength(text))) {
    const std::optional<Utf8Character> character = DecodeFirst(text);
    if (!character) return false;
    text.remove_prefix(character->length);
  }
  return true;
}

}  // namespace ox
