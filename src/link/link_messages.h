// Messages of the line that more than one kind of dialogue shows.
#pragma once

#include <string_view>

namespace ox {

/// Follows the session's port when it cannot be opened, or breaks in use.
constexpr std::string_view kPortFailure = ": lässt sich nicht öffnen!";

}  // namespace ox
