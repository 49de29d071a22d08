// Bytes and texts as a line of the support log holds them; docs/device-formats.md has the rules.
#pragma once

#include <string>
#include <string_view>

#include "platform/bytes.h"

namespace ox {

/// What stood on the line, in quotes: the characters 20 to 7E (hexadecimal) but " and < as they are, every
/// other byte as "<0D>".
std::string QuotedBytes(BytesView bytes);

/// Text for people (UTF-8), in quotes: the same, but what is not ASCII stands as it is. At most 2000 bytes of
/// it; a longer text is cut between two characters and ends in "...".
std::string QuotedText(std::string_view text);

}  // namespace ox
