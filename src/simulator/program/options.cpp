// Options, their values and their help.
#include "simulator/program/options.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "command_line/german_options.h"

namespace ox::sim {
namespace {

struct Option {
  std::string_view name;
  std::string_view value;  // how the help calls it; empty where the option takes none
  std::string_view help;
  bool (*take)(SimulatorOptions&, const std::string& value);  // false when the value is none for it
};

bool ReadNumber(const std::string& text, std::uint32_t& number) {
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data(), end, number);
  return error == std::errc{} && stopped == end;
}

bool TakeGeneration(SimulatorOptions& options, const std::string& value) {
  if (value != "1" && value != "2" && value != "3") return false;
  options.parts.device.generation = value[0] - '0';
  return true;
}

bool TakeBaud(SimulatorOptions& options, const std::string& value) {
  constexpr std::array<unsigned, 4> kBaudRates{2400, 4800, 9600, 19200};
  std::uint32_t baud = 0;
  if (!ReadNumber(value, baud)) return false;
  if (std::find(kBaudRates.begin(), kBaudRates.end(), baud) == kBaudRates.end()) return false;
  options.parts.device.baud = baud;
  options.parts.modem.line.baud = baud;
  return true;
}

bool TakeParity(SimulatorOptions& options, const std::string& value) {
  if (value != "O" && value != "E") return false;
  options.parts.device.parity = value[0];
  options.parts.modem.line.parity = value[0];
  return true;
}

bool TakeLatency(SimulatorOptions& options, const std::string& value) {
  constexpr Seconds kMillisecond = 0.001;
  std::uint32_t milliseconds = 0;
  if (!ReadNumber(value, milliseconds)) return false;
  options.parts.host.latency = milliseconds * kMillisecond;
  return true;
}

bool TakeOpening(SimulatorOptions& options, const std::string& value) {
  constexpr std::uint32_t kMost = 999'999'999;
  std::uint32_t number = 0;
  if (!ReadNumber(value, number) || number < 1 || number > kMost) return false;
  options.opening = static_cast<int>(number);
  return true;
}

bool TakeKinds(SimulatorOptions& options, const std::string& value) {
  if (value.find_first_not_of("abc") != std::string::npos) return false;
  options.parts.device.loaderKinds = value;
  return true;
}

const auto kOptions = std::to_array<Option>({
    {"--generation", "1|2|3", "Gerätegeneration (3)", TakeGeneration},
    {"--baud", "2400|4800|9600|19200", "Baudrate des Dialogs (9600)", TakeBaud},
    {"--parity", "O|E", "Parität des Dialogs: ungerade oder gerade (O)", TakeParity},
    {"--version-text", "TEXT", "Softwarestand ab Werk, bis zu 16 Zeichen",
     [](SimulatorOptions& o, const std::string& v) {
       o.parts.device.version = v;
       return AllPrintable(v);
     }},
    {"--kinds", "abc", "Gerätearten, die das Ladeprogramm annimmt", TakeKinds},
    {"--loader", "", "beginnt im Ladeprogramm",
     [](SimulatorOptions& o, const std::string&) { return o.parts.device.startInLoader = true; }},
    {"--modem", "", "simuliert ein Modem statt einer Orvanexe",
     [](SimulatorOptions& o, const std::string&) { return o.modem = true; }},
    {"--link", "NAME", "Name der Schnittstelle (COM1)",
     [](SimulatorOptions& o, const std::string& v) {
       o.parts.host.link = v;
       return !v.empty();
     }},
    {"--tables", "ORDNER", "Ordner mit netz.mes, netz.par und netz.zuo (.)",
     [](SimulatorOptions& o, const std::string& v) {
       o.tables = v;
       return true;
     }},
    {"--seed", "ZAHL", "Anfang der Zufallszahlen für die Messwerte (1)",
     [](SimulatorOptions& o, const std::string& v) { return ReadNumber(v, o.parts.device.seed); }},
    {"--unpaced", "", "ohne die Übertragungszeit der Zeichen",
     [](SimulatorOptions& o, const std::string&) {
       o.parts.host.paced = false;
       return true;
     }},
    {"--latency", "MS", "so lange hält ein USB-Adapter zurück, was zum PC kommt (0)", TakeLatency},
    {"--memory", "DATEI", "behält Programm und Tabellen des Geräts bis zum nächsten Start",
     [](SimulatorOptions& o, const std::string& v) {
       o.memory = v;
       return !v.empty();
     }},
    {"--dump", "ORDNER", "schreibt den Gerätespeicher bei SIGUSR1 und am Ende dorthin",
     [](SimulatorOptions& o, const std::string& v) {
       o.dump = v;
       return !v.empty();
     }},
    {"--fault", "NAME[=WERT]", "schaltet einen Fehler ein (mehrfach möglich)",
     [](SimulatorOptions& o, const std::string& v) { return SwitchOn(v, o.parts); }},
    {"--replay", "DATEI", "spielt die Antworten aus einem Protokoll von Orvanexe Service",
     [](SimulatorOptions& o, const std::string& v) {
       o.replay = v;
       return !v.empty();
     }},
    {"--opening", "ZAHL", "beginnt darin mit dieser Öffnung der Schnittstelle (1)", TakeOpening},
    {"--version", "", "zeigt die Version",
     [](SimulatorOptions& o, const std::string&) { return o.version = true; }},
    {"--help", "", "zeigt diese Hilfe",
     [](SimulatorOptions& o, const std::string&) { return o.help = true; }},
});

void Define(const Option& option, CLI::App& app, SimulatorOptions& options) {
  const std::string name(option.name);
  if (option.value.empty()) {
    app.add_flag_callback(
           name, [&] { option.take(options, ""); }, std::string(option.help))
        ->disable_flag_override();
    return;
  }
  const auto takeAll = [&option, &options](const std::vector<std::string>& values) {
    for (const std::string& value : values) {
      if (!option.take(options, value))
        throw CLI::ValidationError(std::string(option.name), value + " geht nicht");
    }
  };
  app.add_option_function<std::vector<std::string>>(name, takeAll, std::string(option.help))
      ->type_name(std::string(option.value))
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void DefineAll(CLI::App& app, SimulatorOptions& options) {
  app.set_help_flag();
  app.allow_extras();
  for (const Option& option : kOptions) Define(option, app, options);
}

}  // namespace

SimulatorOptions ReadOptions(const std::vector<std::string>& arguments, std::string& error) {
  SimulatorOptions options;
  CLI::App app;
  DefineAll(app, options);
  try {
    // It takes the words from the end.
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    error = UnknownWord(app);
  } catch (const CLI::ParseError& refused) {
    error = GermanError(app, refused);
  }
  return options;
}

std::string HelpText() {
  SimulatorOptions options;
  CLI::App app("eine simulierte Orvanexe an einem Pseudoterminal", "oxsim");
  DefineAll(app, options);
  return GermanHelp(app) + "\nFehler (Blöcke zählen ab 0; hinter dem = steht die Vorgabe):\n" + FaultHelp() +
         "\nSIGUSR2 schaltet das Gerät aus, noch einmal wieder ein; das Modem sendet, was es hält. Ende mit "
         "Strg+C.\n";
}

}  // namespace ox::sim
