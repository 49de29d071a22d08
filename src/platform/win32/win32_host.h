// What the program asks of its host and Windows gives; the window system comes from elsewhere.
#pragma once

#include "platform/open_ports.h"
#include "platform/standard_streams.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_end_requests.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_keep_awake.h"
#include "platform/win32/win32_port_list.h"
#include "platform/win32/win32_random.h"
#include "platform/win32/win32_serial_port.h"

namespace ox {

struct Win32Host {
  StandardStreams streams;  // before all that writes something
  Win32EndRequests endRequests;
  OpenPorts openPorts;
  Win32Clock clock;
  Win32SerialPorts ports{openPorts};
  Win32PortList portList;
  Win32Files files;
  Win32Random random;
  Win32KeepAwake awake;
};

}  // namespace ox
