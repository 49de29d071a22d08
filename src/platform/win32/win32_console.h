// What a program on a console asks of its host and Windows gives.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/console_events.h"
#include "platform/open_ports.h"
#include "platform/standard_streams.h"
#include "platform/win32/console_modes.h"
#include "platform/win32/win32_clock.h"
#include "platform/win32/win32_end_requests.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_keep_awake.h"
#include "platform/win32/win32_port_list.h"
#include "platform/win32/win32_random.h"
#include "platform/win32/win32_serial_port.h"

namespace ox {

struct Win32Console {
  StandardStreams streams;
  ConsoleModes modes;
  OpenPorts openPorts;
  ConsoleEvents events{openPorts};
  Win32Clock clock;
  Win32SerialPorts ports{openPorts};
  Win32PortList portList;
  Win32Files files;
  Win32Random random;
  Win32KeepAwake awake;
  std::optional<Win32EndRequests> endRequests;  // until a program makes them, Ctrl+C ends it at once

  /// The words behind the program's name, UTF-8. Main's own are in the code page of the host, and the host is
  /// asked for them instead. A word with "*" or "?" becomes the files that it fits.
  static std::vector<std::string> Words(int count, char** arguments);

  /// Which of the three streams lead to a user.
  Terminals WhichAreTerminals() const { return modes.Which(); }
};

}  // namespace ox
