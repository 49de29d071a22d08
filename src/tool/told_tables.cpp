// Messages and questions on a console.
#include "tool/told_tables.h"

#include <istream>
#include <ostream>

#include "tool/console_text.h"
#include "tool/files.h"
#include "tool/table_files.h"

namespace ox::tool {

void ToldMessages::Show(const std::string& text) {
  console_.Say(from_ + Lines(text));
}

bool ToldMessages::Confirm(const std::string& text) {
  return Agrees(console_, from_ + text, yes_);
}

Bytes LoadTable(const Console& console, const std::string& path,
                Bytes (*parse)(const TableText& text, TableMessages& messages)) {
  const auto content = ReadFileOrPipe(console.machine.files, path, kMaxTable);
  if (!content) {
    console.Fail("Fehler beim Lesen der Datei: " + path + "!");
    return {};
  }
  ToldMessages messages(console, path + ": ", false);
  return parse(TableText(*content), messages);
}

bool Agrees(const Console& console, std::string_view message, bool yes) {
  console.Say(Lines(message));
  if (yes) return true;
  if (!console.terminals.input || !console.terminals.messages) {
    console.Say("ohne Terminal heißt die Antwort Nein; --yes bejaht");
    return false;
  }
  console.messages << "Fortfahren? [j/N] " << std::flush;
  std::string answer;
  std::getline(console.input, answer);
  return answer == "j" || answer == "J" || answer == "ja" || answer == "Ja";
}

}  // namespace ox::tool
