// Texts of the libraries and of devices, fit for a console. All that is returned is UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "platform/bytes.h"

namespace ox::tool {

// Control characters, which would change a terminal, become dots.

/// A message whose lines end in CR LF, or in CR: as lines of a console, the last without its end.
std::string Lines(std::string_view message);

/// What came over the line, as text of one line.
std::string Printable(BytesView bytes);

}  // namespace ox::tool
