// The serial ports that this PC really has: built in, and on adapters.
#pragma once

#include <string>
#include <vector>

#include "platform/posix/host_folders.h"

namespace ox {

/// Whether /dev/<name>, "ttyS0" and so on, is a port that exists: the host has more names than ports.
bool IsBuiltIn(const HostFolders& host, const std::string& name);

/// The devices ("ttyUSB0") of the USB adapters that are plugged in, in the order of their places on the bus.
/// Only drivers of plain serial adapters count: what is a telephone's, or a device's own connection, is no
/// COM port.
std::vector<std::string> Adapters(const HostFolders& host);

/// Maker and model, UTF-8, as the adapter behind /dev/<name> gives them; empty when it gives none.
std::string ProductOf(const HostFolders& host, const std::string& name);

}  // namespace ox
