// oxtool poll: the values that a device measures.
#include <memory>
#include <ostream>

#include "exchange/poll_request.h"
#include "tables/mes_table.h"
#include "tool/commands.h"
#include "tool/cycle.h"
#include "tool/device_session.h"
#include "tool/dialogue_on_console.h"
#include "tool/told_tables.h"
#include "tool/value_lines.h"

namespace ox::tool {
namespace {

constexpr int kUsualPause = 10;  // seconds, as in the window

struct Options {
  DeviceOptions device;
  CycleOptions cycle;
  PollFields fields;
  bool z = false;
  bool time = false;
  std::string table;
  bool csv = false;
  bool json = false;
};

/// What goes over the line, and whether the reply may have several records.
struct Poll {
  Bytes request;
  bool multiRecord = false;
};

bool NoField(const PollFields& fields) {
  return fields.AKZ.empty() && fields.MST.empty() && fields.Par.empty();
}

/// What is wrong with the fields; empty when they are right.
std::string_view Refusal(const Options& options) {
  std::optional<PollRefusal> refusal;
  if (options.z) {
    refusal = RefusalOfZRequest(options.fields);
  } else if (!NoField(options.fields)) {
    refusal = RefusalOfSingleRequest(options.fields);
  }
  return refusal ? refusal->message : std::string_view();
}

Poll PollOf(const Options& options) {
  if (options.time) return {Bytes(kTimeRequest), false};
  if (options.z) return {ZRequest(options.fields), false};
  if (NoField(options.fields)) return {Bytes(kCollectiveRequest), true};
  return {SingleRequest(options.fields), !NamesOneValue(options.fields)};
}

ValueForm FormOf(const Options& options) {
  if (options.csv) return ValueForm::kCsv;
  if (options.json) return ValueForm::kJson;
  return options.cycle.seconds > 0 || options.cycle.count > 0 ? ValueForm::kTimedText : ValueForm::kText;
}

/// Asks once and writes what came.
Turn PollOnce(const Options& options, const NameIndex& names, Console& console, DialogueOnConsole& dialogue) {
  const CivilTime polled = console.machine.clock.Now();
  const Poll poll = PollOf(options);
  Bytes reply = dialogue.Exchange(poll.request, poll.multiRecord);
  if (options.z) reply = ShownOfZReply(reply);
  const bool failed = dialogue.TakeFailure();
  const std::string lines = ValueLines(FormOf(options), reply, names, OfficeAskedFor(options.fields), polled);
  console.output << lines;
  if (lines.empty() && !failed) console.Fail("die Orvanexe nennt keinen Wert dazu");
  return failed || lines.empty() ? Turn::kFailed : Turn::kWell;
}

ExitStatus RunPoll(const Options& options, Console& console) {
  const std::string_view refusal = Refusal(options);
  if (!refusal.empty()) return console.WrongUse(std::string(refusal));
  if (OfficeIsRedundant(options.fields)) console.Say(kRedundantOffice);
  NameIndex names;
  if (!options.table.empty()) {
    const Bytes table = LoadTable(console, options.table, ParseMesTable);
    if (table.empty()) return ExitStatus::kFailed;
    names = NameIndex(table);
  }
  DeviceSession session(console, options.device);
  if (!session.Reach()) return ExitStatus::kFailed;
  DialogueOnConsole dialogue(console, session);
  if (options.csv) console.output << CsvHeading();
  const int count = options.cycle.seconds > 0 ? 0 : 1;
  return TakeTurns(console, options.cycle, kUsualPause, count,
                   [&] { return PollOnce(options, names, console, dialogue); });
}

}  // namespace

Action DefinePoll(CLI::App& app) {
  auto options = std::make_shared<Options>();
  DefineDeviceOptions(app, options->device);
  const NewOption office =
      AddOption(app, "--office", options->fields.AKZ, "Amtskennzeichen, drei Ziffern").Takes("AKZ");
  const NewOption point =
      AddOption(app, "--point", options->fields.MST, "Messstellennummer, acht Ziffern").Takes("NUMMER");
  const NewOption parameter =
      AddOption(app, "--parameter", options->fields.Par, "Parameter, vier Ziffern").Takes("PARAMETER");
  const NewOption z = AddFlag(app, "--z", options->z, "Abruf Z statt Abruf J");
  const NewOption time = AddFlag(app, "--time", options->time, "Zeitabruf");
  AddOption(app, "--table", options->table, "Messstellentabelle, aus der die Namen kommen").Takes("X.mes");
  DefineCycleOptions(app, options->cycle);
  const NewOption csv = AddFlag(app, "--csv", options->csv, "als CSV für eine Tabellenkalkulation");
  AddFlag(app, "--json", options->json, "ein JSON-Objekt je Zeile").Excludes(csv);
  for (const NewOption& other : {z, office, point, parameter}) time.Excludes(other);
  return [options](Console& console) { return RunPoll(*options, console); };
}

}  // namespace ox::tool
