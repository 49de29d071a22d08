// Telling a pseudo-terminal from a built-in port or an adapter.
#pragma once

namespace ox {

/// False also when the host does not say.
bool IsPseudoTerminal(int terminal);

}  // namespace ox
