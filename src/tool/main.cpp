// The program: the host put together, the command line read in it.
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>

#include "platform/posix/console_events.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_end_requests.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_keep_awake.h"
#include "platform/posix/posix_port_list.h"
#include "platform/posix/posix_random.h"
#include "platform/posix/posix_serial_port.h"
#include "platform/posix/standard_streams.h"
#include "tool/tool_program.h"

namespace {

bool Set(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

bool TerminalShowsColours() {
  return !Set("NO_COLOR") && Set("TERM") && std::getenv("TERM") != std::string_view("dumb");
}

}  // namespace

int main(int count, char** arguments) {
  const ox::StandardStreams streams;  // before all that opens something
  ox::OpenPorts openPorts;
  ox::ConsoleEvents events(openPorts);
  ox::PosixClock clock;
  ox::PosixSerialPorts ports(openPorts);
  ports.TellFailuresOnly();
  ox::PosixFiles files;
  ox::PosixRandom random;
  ox::PosixKeepAwake awake;
  ox::PosixPortList portList;
  ox::Machine machine{events, clock, ports, files, random, awake, portList};
  const ox::tool::Terminals terminals{isatty(STDIN_FILENO) != 0, isatty(STDOUT_FILENO) != 0,
                                      isatty(STDERR_FILENO) != 0, TerminalShowsColours()};
  std::optional<ox::PosixEndRequests> requests;
  const ox::tool::ConsoleHost host{
      .useDevice = [&](const std::string& path) { ports.UseDevice(path); },
      .holdEndRequests = [&]() -> const bool& { return events.Watch(requests.emplace().Handle()); }};
  ox::tool::Console console{machine, std::cin, std::cout, std::cerr, terminals, host};
  return static_cast<int>(ox::tool::RunTool({arguments + 1, arguments + count}, console));
}
