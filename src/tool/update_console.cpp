// Steps, blocks and messages on a console.
#include "tool/update_console.h"

#include <string>

#include "platform/event_loop.h"
#include "programming/update_estimate.h"

namespace ox::tool {
namespace {

std::string Bar(int percent) {
  constexpr std::size_t kWidth = 20;
  constexpr std::size_t kWhole = 100;
  const std::size_t full = static_cast<std::size_t>(percent) * kWidth / kWhole;
  return "[" + std::string(full, '#') + std::string(kWidth - full, '.') + "]";
}

/// Shows how an update goes on. It is the event loop of the run as well: every turn moves the seconds on, and
/// notices that somebody wants the program to end.
class UpdateOnConsole : public UpdateObserver, public EventLoop {
 public:
  UpdateOnConsole(const Console& console, DeviceSession& session, const bool& stop)
      : console_(console), session_(session), stop_(stop) {}

  void Step(std::string_view what, int /*longestSeconds*/, std::size_t blocks) override {
    estimate_.Step(what, blocks, Now());
    Show();
  }
  void StartMarks() override {}
  void Mark() override {}
  void BlockSent(std::size_t /*number*/) override {
    estimate_.BlockSent(Now());
    Show();
  }
  void Tell(std::string_view message) override { session_.Say(message); }

  void Yield() override { console_.machine.events.Yield(); }
  void Rest() override {
    console_.machine.events.Rest();
    if (stop_ && !told_) {
      told_ = true;
      session_.Say("das Gerät wird noch zu Ende programmiert, dann endet oxtool");
    }
    Show();
  }

 private:
  Seconds Now() const { return console_.machine.clock.SecondsSinceMidnight(); }

  void Show() {
    if (!console_.terminals.messages) return;
    std::string line = estimate_.What();
    if (estimate_.Sends()) {
      line += " " + Bar(estimate_.Percent()) + " " + std::to_string(estimate_.Percent()) + " %, noch " +
              std::to_string(estimate_.SecondsLeft(Now())) + " s";
    } else if (const int gone = estimate_.SecondsGone(Now()); gone > 0) {
      line += " " + std::to_string(gone) + " s";
    }
    session_.Status().Show(line);
  }

  const Console& console_;
  DeviceSession& session_;
  const bool& stop_;
  UpdateEstimate estimate_;
  bool told_ = false;
};

}  // namespace

ExitStatus RunOnConsole(const Console& console, DeviceSession& session, bool writes,
                        const DeviceSearch& search, const UpdateProcedure& procedure) {
  constexpr static bool kNever = false;
  UpdateOnConsole update(console, session, writes ? console.host.holdEndRequests() : kNever);
  const Machine& host = console.machine;
  Machine machine{update, host.clock, host.ports, host.files, host.random, host.awake, host.portList};
  LoaderLink link(machine, session.Settings());
  const UpdateEnd end = procedure(link, search, update);
  return end == UpdateEnd::kSucceeded ? ExitStatus::kFine : ExitStatus::kFailed;
}

void DefineUpdateOptions(CLI::App& app, UpdateOptions& options) {
  AddFlag(app, "--yes,-y", options.yes, "beantwortet jede Frage mit Ja");
  AddFlag(app, "--dry-run", options.dryRun, "prüft Dateien und Gerät und schreibt nichts");
}

}  // namespace ox::tool
