// Which other program has taken a serial device.
#pragma once

#include <optional>
#include <string>

#include "platform/posix/host_folders.h"

namespace ox {

/// The name of another program that has locked the device at the path, or has it open; empty when the host
/// does not tell its name, nothing when there is none. Programs of other users are noticed by their locks
/// alone.
std::optional<std::string> HolderOf(const HostFolders& host, const std::string& path);

}  // namespace ox
