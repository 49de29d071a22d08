// Turns and the pauses between them.
#include "tool/cycle.h"

#include <ostream>

#include "link/wait.h"
#include "tool/device_options.h"

namespace ox::tool {
namespace {

constexpr Seconds kDay = 24 * 60 * 60;
constexpr int kLongestPause = 12 * 60 * 60;  // seconds; the clock, which knows no date, tells it from a day
constexpr int kMostTurns = 1'000'000'000;

/// Seconds since a time; the clock falls back to 0 at midnight.
Seconds Since(Seconds start, Seconds now) {
  return now < start ? now + kDay - start : now - start;
}

/// Waits until so many seconds have passed since the start, or somebody wants the program to end.
void RestUntil(Machine& machine, Seconds start, int seconds, const bool& stop) {
  const auto length = static_cast<Seconds>(seconds);
  for (;;) {
    const Seconds now = machine.clock.SecondsSinceMidnight();
    const Seconds left = length - Since(start, now);
    if (left <= 0 || stop) return;
    Pause(machine, Difference{now, left}, stop);  // midnight ends it
  }
}

}  // namespace

void DefineCycleOptions(CLI::App& app, CycleOptions& options) {
  AddOption(app, "--every", options.seconds, "fragt alle so viele Sekunden; Ende mit Strg+C")
      .Takes("SEKUNDEN")
      .Checked(WholeNumber(1, kLongestPause));
  AddOption(app, "--count", options.count, "fragt so viele Male")
      .Takes("ZAHL")
      .Checked(WholeNumber(1, kMostTurns));
}

ExitStatus TakeTurns(Console& console, const CycleOptions& options, int seconds, int count,
                     const std::function<Turn()>& turn) {
  const bool& stop = console.host.holdEndRequests();
  const int period = options.seconds > 0 ? options.seconds : seconds;
  const int turns = options.count > 0 ? options.count : count;
  ExitStatus status = ExitStatus::kFine;
  for (int number = 1;; ++number) {
    const Seconds start = console.machine.clock.SecondsSinceMidnight();
    const Turn went = turn();
    if (went != Turn::kWell) status = ExitStatus::kFailed;
    if (!console.output.flush()) return ExitStatus::kFailed;
    if (went == Turn::kLast || number == turns) return status;
    RestUntil(console.machine, start, period, stop);
    if (stop) return status;
  }
}

}  // namespace ox::tool
