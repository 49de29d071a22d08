// The program: the host put together, the command line read in it.
#include <cstdlib>
#include <iostream>

#include "this_host/this_host.h"
#include "tool/tool_program.h"

namespace {

bool UserWantsColours() {
  const char* without = std::getenv("NO_COLOR");
  return without == nullptr || *without == '\0';
}

}  // namespace

int main(int count, char** arguments) {
  ox::ThisConsole here;
  here.ports.TellFailuresOnly();
  ox::Machine machine{here.events, here.clock, here.ports,   here.files,
                      here.random, here.awake, here.portList};
  ox::Terminals terminals = here.WhichAreTerminals();
  terminals.colours = terminals.colours && UserWantsColours();
  const ox::tool::ConsoleHost host{.useDevice = [&](const std::string& path) { here.ports.UseDevice(path); },
                                   .holdEndRequests = [&]() -> const bool& {
                                     return here.events.Watch(here.endRequests.emplace().Handle());
                                   }};
  ox::tool::Console console{machine, std::cin, std::cout, std::cerr, terminals, host};
  return static_cast<int>(ox::tool::RunTool(ox::ThisConsole::Words(count, arguments), console));
}
