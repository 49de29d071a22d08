// Help texts laid out, and the parser's errors told anew.
#include "command_line/german_options.h"

#include <algorithm>
#include <string_view>

#include "platform/utf8.h"
#include "version/version.h"

namespace ox {
namespace {

constexpr std::size_t kColumn = 32;  // where the explanations begin, behind the indent

std::string Row(std::string name, std::string_view help) {
  const std::size_t width = CharacterCount(name);
  name.append(kColumn > width ? kColumn - width : 1, ' ');
  return "  " + name.append(help) + "\n";
}

/// All names of an option, the short ones first, and its value.
std::string NamesOf(const CLI::Option& option) {
  std::string names;
  for (const std::string& name : option.get_snames()) names += (names.empty() ? "-" : ", -") + name;
  for (const std::string& name : option.get_lnames()) names += (names.empty() ? "--" : ", --") + name;
  return option.get_items_expected_max() == 0 ? names : names + " " + option.get_type_name();
}

std::string Positional(const CLI::Option& option) {
  const std::string name = option.get_name(true) + (option.get_expected_max() > 1 ? " ..." : "");
  return option.get_required() ? name : "[" + name + "]";
}

/// The command that was given, or the program itself.
const CLI::App& Innermost(const CLI::App& app) {
  const auto chosen = app.get_subcommands();
  return chosen.empty() ? app : Innermost(*chosen.back());
}

/// The option that an error tells of, sometimes without its dashes; null when it tells of none.
const CLI::Option* OptionIn(const CLI::App& app, const std::string& told) {
  const std::string name = told.substr(0, told.find_first_of(": "));
  for (const std::string dashes : {"", "-", "--"}) {
    if (const CLI::Option* option = app.get_option_no_throw(dashes + name)) return option;
  }
  return nullptr;
}

std::string Mismatch(const CLI::App& app, const std::string& told) {
  const CLI::Option* option = OptionIn(app, told);
  if (option == nullptr) return "die Angaben sind nicht zu verstehen";
  const std::string name = option->get_name();
  if (option->get_positional()) {
    const bool tooOften = static_cast<int>(option->count()) > option->get_items_expected_max();
    return name + (tooOften ? " ist zu oft angegeben" : " ist zu selten angegeben");
  }
  if (option->get_items_expected_max() == 0) return name + " nimmt keinen Wert";
  const bool given = option->count() > 0 && option->get_items_expected_max() == 1;
  return name + (given ? " ist mehrfach angegeben" : " braucht einen Wert");
}

}  // namespace

std::string GermanHelp(const CLI::App& app) {
  const CLI::App* program = &app;
  std::string name = app.get_name();
  while ((program = program->get_parent()) != nullptr) name.insert(0, program->get_name() + " ");
  const auto commands = app.get_subcommands([](const CLI::App*) { return true; });

  std::string usage = "\n\nAufruf: " + name + (commands.empty() ? "" : " BEFEHL") + " [Optionen]";
  std::string rows;
  for (const CLI::App* command : commands) rows += Row(command->get_name(), command->get_description());
  if (!commands.empty()) rows = "Befehle:\n" + rows + "\nOptionen:\n";
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_positional()) {
      usage += " " + Positional(*option);
      rows += Row(option->get_name(true), option->get_description());
    } else {
      rows += Row(NamesOf(*option), option->get_description());
    }
  }
  return name + ": " + app.get_description() + usage + "\n\n" + rows;
}

std::string GermanError(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& command = Innermost(app);
  std::string told = error.what();
  const CLI::Option* option = OptionIn(command, told);
  const std::string name = option == nullptr ? told : option->get_name();
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) return told;
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr) return name + " fehlt";
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) return Mismatch(command, told);
  if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
    return name + " geht nicht zusammen mit " + told.substr(told.rfind(' ') + 1);
  return name + " ist nicht zu verstehen";
}

std::string UnknownWord(const CLI::App& app) {
  std::vector<std::string> unknown = app.remaining(true);
  std::erase(unknown, "--");  // before words that are no options although they begin with a dash
  if (unknown.empty()) return {};
  const std::string& word = unknown.front();
  if (word.starts_with("-")) return "unbekannte Option " + word;
  return Innermost(app).get_subcommands({}).empty() ? word + " ist zu viel" : "unbekannter Befehl " + word;
}

std::string VersionLine(const std::string& program) {
  return program + " " + kVersion + (*kCommit == '\0' ? "" : " (" + std::string(kCommit) + ")");
}

}  // namespace ox
