// The search for a device, as the updates ask for it.
#pragma once

#include <functional>

namespace ox {

/// Looks for a device at the session's port, which is closed, and returns whether one was found. What it is
/// and how it is spoken to stands in the session settings then.
using DeviceSearch = std::function<bool()>;

/// Nine pairs of line parameters, up to a second each.
constexpr int kLongestSearchSeconds = 9;

}  // namespace ox
