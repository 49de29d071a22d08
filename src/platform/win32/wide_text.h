// The border between UTF-8 and the host's UTF-16.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ox {

/// UTF-8 as the host takes it; nothing when it is broken.
std::optional<std::wstring> Wide(std::string_view text);

/// A text of the host as UTF-8; nothing for a name with half a character, which the host allows.
std::optional<std::string> Narrow(std::wstring_view text);

}  // namespace ox
