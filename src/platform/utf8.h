// UTF-8, character by character.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ox {

/// Begins a text that is UTF-8: editors and mail programs put it there, spreadsheets want it.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The text behind its byte order mark, or as it is when it has none.
std::string_view WithoutByteOrderMark(std::string_view text);

/// A character of a UTF-8 text.
struct Utf8Character {
  char32_t code;
  std::size_t length;  // bytes
};

/// The character outside ASCII with which the text begins; nothing when its UTF-8 is broken. The text is not
/// empty.
std::optional<Utf8Character> DecodeFirst(std::string_view text);

/// The number of ASCII characters at the start of a text.
std::size_t AsciiLength(std::string_view text);

/// The number of characters of a well-formed text: bytes that go on a character are not counted.
std::size_t CharacterCount(std::string_view text);

/// Appends a character whose code is below 0x10000.
void AppendUtf8(std::string& text, char32_t code);

/// Whether the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view text);

}  // namespace ox
