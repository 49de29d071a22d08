// Everything that a window asks of its host, in one place.
#pragma once

#include "platform/machine.h"
#include "ui/window_system.h"

namespace ox {

/// The machine and its windows; they outlive every window. The window system is the machine's event loop.
struct Host : Machine {
  WindowSystem& windows;
};

}  // namespace ox
