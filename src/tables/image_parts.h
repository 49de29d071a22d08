// The two readers behind ReadTableImage, and what they share.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tables/image_content.h"

namespace ox {

/// The word at an offset; nothing when it does not lie within the bytes.
std::optional<std::size_t> WordAt(BytesView bytes, std::size_t offset);

/// Without the blanks at its end, but not empty: a text of blanks alone keeps one.
Bytes WithoutPadding(BytesView text);

// Each fills in tables and body size; returns what is wrong, else the empty text. `body` is the image without
// its checksum.

std::string ReadOlderBody(BytesView body, ImageContent& content);
std::string ReadGeneration3Body(BytesView body, ImageContent& content);

}  // namespace ox
