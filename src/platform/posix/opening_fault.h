// Why a device cannot be opened, and what helps.
#pragma once

#include <string>

#include "platform/posix/host_folders.h"
#include "platform/serial_port.h"

namespace ox {

/// What the host's error number means for the device at the path, in German: not there, no rights (with the
/// group that has them, where joining it would help), taken (by which program, where the host tells), no
/// serial line.
PortError OpeningFault(int error, const std::string& path, const HostFolders& host = {});

}  // namespace ox
