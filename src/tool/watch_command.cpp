// oxtool watch: battery and charger of a generation III device.
#include <memory>
#include <ostream>

#include "power/power_csv.h"
#include "power/power_log.h"
#include "power/power_request.h"
#include "tool/commands.h"
#include "tool/cycle.h"
#include "tool/dialogue_on_console.h"

namespace ox::tool {
namespace {

constexpr int kUsualPause = 1;  // seconds, as in the window

struct Options {
  DeviceOptions device;
  CycleOptions cycle;
  bool csv = false;
};

/// Asks once and writes what came. A device that does not answer ends it, as in the window.
Turn WatchOnce(const Options& options, Console& console, DialogueOnConsole& dialogue) {
  const Bytes reply = dialogue.Exchange(BuildStatusRequest(kNoPreset), false);
  if (dialogue.TakeFailure()) return Turn::kLast;
  const CivilTime now = console.machine.clock.Now();
  const auto status = reply.empty() ? std::nullopt : ReadPowerStatus(BytesView(reply).substr(1));
  if (!status) {
    console.Fail("die Antwort ist kein Stromversorgungsstatus");
    return Turn::kFailed;
  }
  const PowerStatusTexts texts = FormatPowerStatus(*status);
  console.output << (options.csv ? PowerCsvLine(now, texts) : LogLine(now, texts) + "\n");
  return Turn::kWell;
}

ExitStatus Watch(const Options& options, Console& console) {
  DeviceSession session(console, options.device);
  if (!session.Reach()) return ExitStatus::kFailed;
  DialogueOnConsole dialogue(console, session);
  if (options.csv) console.output << PowerCsvHeading();
  constexpr int kNoEnd = 0;
  return TakeTurns(console, options.cycle, kUsualPause, kNoEnd,
                   [&] { return WatchOnce(options, console, dialogue); });
}

}  // namespace

Action DefineWatch(CLI::App& app) {
  auto options = std::make_shared<Options>();
  DefineDeviceOptions(app, options->device);
  DefineCycleOptions(app, options->cycle);
  AddFlag(app, "--csv", options->csv, "als CSV für eine Tabellenkalkulation");
  return [options](Console& console) { return Watch(*options, console); };
}

}  // namespace ox::tool
