// Device numbers of this host.
#include "platform/posix/pseudo_terminal.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace ox {
namespace {

// The major numbers that the host keeps for pseudo-terminals.
constexpr unsigned kFirstPseudoTerminal = 136;
constexpr unsigned kLastPseudoTerminal = 143;

}  // namespace

bool IsPseudoTerminal(int terminal) {
  struct stat status {};
  return fstat(terminal, &status) == 0 && IsPseudoTerminalNumber(status.st_rdev);
}

bool IsPseudoTerminalNumber(dev_t device) {
  const unsigned kind = major(device);
  return kind >= kFirstPseudoTerminal && kind <= kLastPseudoTerminal;
}

}  // namespace ox
