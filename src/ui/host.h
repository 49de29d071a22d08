// Everything that a window asks of its host, in one place.
#pragma once

#include "platform/machine.h"
#include "ui/notices.h"
#include "ui/window_system.h"

namespace ox {

/// The machine, its windows, and what their quiet lines say; they outlive every window. The window system is
/// the machine's event loop.
struct Host : Machine {
  WindowSystem& windows;
  Notices& notices;
};

}  // namespace ox
