// Which device of this host is the port COMn.
#pragma once

#include <optional>
#include <string>

#include "platform/posix/host_folders.h"

namespace ox {

/// Path of the device of COMn: the entry COMn of the working folder where there is one, even one that leads
/// nowhere; else the built-in port n, ttyS(n-1), where it really exists. The numbers that are left, from 1
/// on, are those of the USB adapters in the order of their places on the bus, without those that an entry
/// leads to. Nothing when no device has the number.
std::optional<std::string> FindPort(const HostFolders& host, int number);

/// Whether a path that FindPort gave is an entry of the working folder.
bool IsEntry(const std::string& path);

/// What the path leads to, for people: the device behind all links, or the last name that a broken link
/// holds.
std::string DeviceBehind(const std::string& path);

}  // namespace ox
