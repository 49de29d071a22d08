// Which device of this host is the port COMn.
#pragma once

#include <string>

namespace ox {

/// Path of the device of COMn: the entry COMn of the working folder where there is one, even one that leads
/// nowhere, else /dev/ttyS(n-1). Throws PortError for a number below 1.
std::string PortPath(int number);

/// What the path leads to, for people: the device behind all links, or the last name that a broken link
/// holds.
std::string DeviceBehind(const std::string& path);

}  // namespace ox
