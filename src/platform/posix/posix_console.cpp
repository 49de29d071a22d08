// What a terminal of this host can show.
#include "platform/posix/posix_console.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace ox {

Terminals PosixConsole::WhichAreTerminals() {
  const char* kind = std::getenv("TERM");
  const std::string_view terminal = kind == nullptr ? "" : kind;
  return {isatty(STDIN_FILENO) != 0, isatty(STDOUT_FILENO) != 0, isatty(STDERR_FILENO) != 0,
          !terminal.empty() && terminal != "dumb"};
}

}  // namespace ox
