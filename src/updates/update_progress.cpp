// The figures of a run, a few times a second.
#include "updates/update_progress.h"

#include <new>
#include <string>

namespace ox {
namespace {

/// Often enough to be seen moving.
constexpr int kBeatMilliseconds = 100;
/// While blocks are sent, so many beats go by from one picture to the next: the device does not wait for
/// them.
constexpr int kBeatsBetween = 3;

constexpr std::string_view kClosesLater = "Fenster schließt nach erfolgreicher Programmierung";

}  // namespace

UpdateProgress::UpdateProgress(Window& window, Clock& clock)
    : Step(window, "Step"),
      Rest(window, "Rest"),
      Bar(window, "Bar"),
      Closing(window, "Closing"),
      Beat(window, "Beat", kBeatMilliseconds),
      clock_(clock) {
  Bar.SetVisible(false);
  Beat.onTick = [this] {
    if (estimate_.Sends() && ++beats_ % kBeatsBetween != 0) return;
    try {
      Show();
    } catch (const std::bad_alloc&) {
      // The figures are left out. A message would stop the run under way, and the device waits for it.
    }
  };
}

void UpdateProgress::OnStep(std::string_view what, std::size_t blocks) {
  estimate_.Step(what, blocks, clock_.SecondsSinceMidnight());
  Step.SetText(what);
  Show();
  Bar.SetVisible(true);
  Beat.SetEnabled(true);
}

void UpdateProgress::OnCloseRequest() {
  Closing.SetText(kClosesLater);
}

void UpdateProgress::Stop() {
  Beat.SetEnabled(false);
  Rest.SetText("");
  Closing.SetText("");
}

void UpdateProgress::Clear() {
  Stop();
  Bar.SetVisible(false);
  Step.SetText("");
  estimate_ = {};
}

void UpdateProgress::Show() {
  const Seconds now = clock_.SecondsSinceMidnight();
  if (estimate_.Sends()) {
    Rest.SetText("noch " + std::to_string(estimate_.SecondsLeft(now)) + " s");
  } else {
    const int gone = estimate_.SecondsGone(now);
    Rest.SetText(gone == 0 ? "" : "seit " + std::to_string(gone) + " s");
  }
  if (estimate_.Sends() || estimate_.Percent() > 0) {
    Bar.SetPercent(estimate_.Percent());
  } else {
    Bar.Pulse();
  }
}

}  // namespace ox
