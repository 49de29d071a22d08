// What a program on a console asks of its host and POSIX gives.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/console_events.h"
#include "platform/open_ports.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_end_requests.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_keep_awake.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_random.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/standard_streams.h"
#include "platform/terminals.h"

namespace ox {

struct PosixConsole {
  StandardStreams streams;  // before all that opens something
  OpenPorts openPorts;
  ConsoleEvents events{openPorts};
  PosixClock clock;
  PosixSerialPorts ports{openPorts};
  PosixPortList portList;
  PosixFiles files;
  PosixRandom random;
  PosixKeepAwake awake;
  std::optional<PosixEndRequests> endRequests;  // until a program makes them, a signal ends it at once

  /// The words behind the program's name, UTF-8; `count` and `arguments` are those of main.
  static std::vector<std::string> Words(int count, char** arguments) {
    return {arguments + 1, arguments + count};
  }

  /// Which of the three streams lead to a user.
  static Terminals WhichAreTerminals();
};

}  // namespace ox
