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
  if (fstat(terminal, &status) != 0) return false;
  const unsigned kind = major(status.st_rdev);
  return kind >= kFirstPseudoTerminal && kind <= kLastPseudoTerminal;
}

}  // namespace ox
