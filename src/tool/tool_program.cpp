// Reads the command line, and runs the one command that it names.
#include "tool/tool_program.h"

#include <map>
#include <new>
#include <ostream>

#include "command_line/german_options.h"
#include "tool/commands.h"

namespace ox::tool {
namespace {

/// The status, unless what was written did not arrive.
ExitStatus Finish(ExitStatus status, Console& console) {
  return console.output.flush() ? status : console.Fail("die Ausgabe lässt sich nicht schreiben");
}

ExitStatus RunAction(const Action& action, Console& console) {
  ExitStatus status = ExitStatus::kFailed;
  try {
    status = action(console);
  } catch (const std::bad_alloc&) {
    return console.Fail("Speicher voll");
  }
  return Finish(status, console);
}

}  // namespace

ExitStatus RunTool(const std::vector<std::string>& arguments, Console& console) {
  CLI::App app("Tabellen, Programme und Geräte auf der Befehlszeile", "oxtool");
  app.allow_extras();
  app.set_help_flag("-h,--help", "zeigt diese Hilfe");
  std::map<std::string, Action> actions;
  for (const Command& command : Commands()) {
    actions[command.name] = command.define(*app.add_subcommand(command.name, command.purpose));
  }
  app.set_version_flag("--version", VersionLine("oxtool"), "zeigt die Version");
  try {
    // It takes the words from the end.
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    const auto chosen = app.get_subcommands();
    console.output << GermanHelp(chosen.empty() ? app : *chosen.front());
    return Finish(ExitStatus::kFine, console);
  } catch (const CLI::CallForVersion& version) {
    console.output << version.what() << "\n";
    return Finish(ExitStatus::kFine, console);
  } catch (const CLI::ParseError& error) {
    const std::string unknown = UnknownWord(app);  // a word that nothing took makes others miss
    return console.WrongUse(unknown.empty() ? GermanError(app, error) : unknown);
  }
  const std::string unknown = UnknownWord(app);
  if (!unknown.empty()) return console.WrongUse(unknown);
  const auto chosen = app.get_subcommands();
  if (chosen.size() != 1) return console.WrongUse("genau ein Befehl muss angegeben sein");
  return RunAction(actions[chosen.front()->get_name()], console);
}

}  // namespace ox::tool
