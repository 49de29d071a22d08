// Everything that a procedure asks of its host, in one place.
#pragma once

#include "platform/clock.h"
#include "platform/event_loop.h"
#include "platform/files.h"
#include "platform/keep_awake.h"
#include "platform/port_list.h"
#include "platform/random_numbers.h"
#include "platform/serial_port.h"

namespace ox {

/// References to the host's contracts but its windows; the host outlives everything that works on it.
struct Machine {
  EventLoop& events;
  Clock& clock;
  SerialPorts& ports;
  Files& files;
  RandomNumbers& random;
  KeepAwake& awake;
  PortList& portList;
};

}  // namespace ox
