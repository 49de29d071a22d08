// The list of all commands.
#include "tool/commands.h"

namespace ox::tool {

std::span<const Command> Commands() {
  static constexpr Command kCommands[] = {
      {"check", "prüft Stationstabellen und nennt alle Fehler", DefineCheck},
      {"image", "schreibt das Abbild, das ein Gerät von den Tabellen erhält", DefineImage},
      {"tables", "zeigt die Tabellen in einem Abbild", DefineTables},
      {"program", "prüft eine Programmdatei", DefineProgram},
      {"unpack", "schreibt die Bytes einer Programmdatei, mit Prüfwort", DefineUnpack},
      {"pack", "macht aus einer Ladedatei eine Programmdatei für OX III", DefinePack},
      {"log", "zeigt das Protokoll der Stromversorgung", DefineLog},
      {"identify", "nennt Typ und Softwarestand des Geräts", DefineIdentify},
      {"poll", "ruft Messwerte vom Gerät ab", DefinePoll},
      {"watch", "beobachtet die Stromversorgung des Geräts", DefineWatch},
      {"update-tables", "schreibt Stationstabellen in das Gerät", DefineUpdateTables},
      {"update-program", "schreibt ein Programm in das Gerät", DefineUpdateProgram},
  };
  return kCommands;
}

}  // namespace ox::tool
