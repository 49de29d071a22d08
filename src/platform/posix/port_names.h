// Which device of this host is the port COMn.
#pragma once

#include <string>

namespace ox {

/// "COM1" and so on.
std::string PortName(int number);

/// Path of the device of COMn: the entry COMn of the working folder where there is one, even one that leads
/// nowhere, else /dev/ttyS(n-1). Throws PortError for a number below 1.
std::string PortPath(int number);

}  // namespace ox
