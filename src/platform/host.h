// Everything that the program asks of its host, in one hand.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/random_numbers.h"
#include "platform/serial_port.h"
#include "platform/window_system.h"

namespace ox {

/// References to the host's contracts; the host outlives every window.
struct Host {
  WindowSystem& windows;
  Clock& clock;
  SerialPorts& ports;
  Files& files;
  RandomNumbers& random;
};

}  // namespace ox
