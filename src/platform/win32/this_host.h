// The host for which this program is built: Windows.
#pragma once

#include "platform/win32/win32_console.h"
#include "platform/win32/win32_host.h"

namespace ox {

using ThisHost = Win32Host;
using ThisConsole = Win32Console;

}  // namespace ox
