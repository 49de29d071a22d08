// The one place where bytes (Windows-1252) and text for people (UTF-8) meet.
#pragma once

#include <string>
#include <string_view>

#include "platform/bytes.h"

namespace ox {

/// Bytes from the line or from a table, as text for people. Every byte has a character: the five codes that
/// Windows-1252 leaves open become the control characters of the same number.
std::string ToText(BytesView bytes);

/// Text that a user typed, as bytes. A character outside Windows-1252 becomes "?"; so does broken UTF-8.
Bytes ToBytes(std::string_view text);

/// Whether the bytes are well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// The content of a text file as Windows-1252: today's editors write UTF-8, so a content that is valid UTF-8
/// with characters outside ASCII is brought to Windows-1252 (without its byte order mark), any other is taken
/// as it is.
Bytes FileTextToBytes(Bytes content);

}  // namespace ox
