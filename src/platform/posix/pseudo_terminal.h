// Telling a pseudo-terminal from a built-in port or an adapter.
#pragma once

#include <sys/types.h>

namespace ox {

/// False also when the host does not say.
bool IsPseudoTerminal(int terminal);

/// The same, of a device number.
bool IsPseudoTerminalNumber(dev_t device);

}  // namespace ox
