// The host for which this program is built: POSIX.
#pragma once

#include "platform/posix/posix_console.h"
#include "platform/posix/posix_host.h"

namespace ox {

using ThisHost = PosixHost;
using ThisConsole = PosixConsole;

}  // namespace ox
