// What the program asks of its host and POSIX gives; the window system comes from elsewhere.
#pragma once

#include "platform/open_ports.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_end_requests.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_keep_awake.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_random.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/standard_streams.h"

namespace ox {

struct PosixHost {
  StandardStreams streams;  // before all that opens something
  PosixEndRequests endRequests;
  OpenPorts openPorts;
  PosixClock clock;
  PosixSerialPorts ports{openPorts};
  PosixPortList portList;
  PosixFiles files;
  PosixRandom random;
  PosixKeepAwake awake;
};

}  // namespace ox
