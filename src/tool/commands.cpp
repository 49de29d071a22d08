// The list of all commands.
#include "tool/commands.h"

namespace ox::tool {

std::span<const Command> Commands() {
  static constexpr Command kCommands[] = {
      {"check", "prüft Stationstabellen und nennt alle Fehler", DefineCheck},
  };
  return kCommands;
}

}  // namespace ox::tool
