// Virtual time between the events of devices, users and timers.
#include "support/test_windows.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/side.h"

namespace ox::test {
namespace {

/// The longest that one Rest waits.
constexpr double kRestSeconds = 0.008;
/// What a round of a loop takes that does not take the input which waits.
constexpr double kRoundSeconds = 0.00005;
/// A window that its script left open, and that nothing closes, is a mistake of the test.
constexpr double kLongestShowing = 200000;

}  // namespace

void TestWindows::OpenMain(Window& window) {
  for (Control* control : window.Controls())
    if (auto* timer = dynamic_cast<Timer*>(control)) timers_.push_back({&window, timer, TestPorts::kNever});
  shown_.push_back(&window);
  const Exposure exposure;
  window.Open();
  window.Activate();
}

void TestWindows::RequestEnd() {
  ending_ = true;
  for (auto window = shown_.rbegin(); window != shown_.rend(); ++window) (*window)->RequestEnd();
}

void TestWindows::Pass(double seconds) {
  const double end = clock_.Elapsed() + seconds;
  while (clock_.Elapsed() < end) WaitUntil(end);
}

void TestWindows::Yield() {
  const Shelter shelter;
  RunDueActions();
  TickTimers();
}

void TestWindows::Rest() {
  const Shelter shelter;
  WaitUntil(clock_.Elapsed() + (ports_.NextInput() <= clock_.Elapsed() ? kRoundSeconds : kRestSeconds));
}

void TestWindows::WaitUntil(double limit) {
  Yield();
  double next = limit;
  if (ports_.NextInput() > clock_.Elapsed()) next = std::min(next, ports_.NextInput());
  for (const Due& due : actions_) next = std::min(next, due.when);
  for (const RunningTimer& running : timers_) next = std::min(next, running.due);
  clock_.Advance(std::max(next - clock_.Elapsed(), 0.0));
  Yield();
}

void TestWindows::RunDueActions() {
  const auto isDue = [this](const Due& due) { return due.when <= clock_.Elapsed(); };
  for (auto due = actions_.begin(); (due = std::ranges::find_if(actions_, isDue)) != actions_.end();) {
    const auto action = std::move(due->action);
    actions_.erase(due);
    action();
  }
}

void TestWindows::TickTimers() {
  // By index: a tick may open further windows.
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    RunningTimer& running = timers_[i];
    const bool ticks = running.timer->Enabled() && running.due <= clock_.Elapsed();
    if (!running.timer->Enabled()) {
      running.due = TestPorts::kNever;
    } else if (ticks || running.due == TestPorts::kNever) {
      running.due = clock_.Elapsed() + running.timer->IntervalMilliseconds() / 1000.0;
    }
    if (!ticks) continue;
    const Exposure exposure;
    running.timer->Tick();
  }
}

void TestWindows::ShowModal(Window& window) {
  const Shelter shelter;
  OpenMain(window);
  const auto script = scripts_.find(window.Name());
  if (script != scripts_.end() && window.IsOpen()) script->second(window);
  const double limit = clock_.Elapsed() + (script != scripts_.end() ? kLongestShowing : 0);
  while (window.IsOpen() && clock_.Elapsed() < limit) WaitUntil(limit);
  EXPECT_TRUE(script == scripts_.end() || !window.IsOpen()) << "nobody closes the window " << window.Name();
  if (window.IsOpen()) window.RequestClose();
  std::erase(shown_, &window);
  std::erase_if(timers_, [&](const RunningTimer& running) { return running.window == &window; });
}

Answer TestWindows::ShowMessage(std::string_view text, Buttons buttons) {
  const Shelter shelter;
  messages_.emplace_back(text);
  if (observer_) observer_(std::string(text));
  return buttons == Buttons::kOkCancel && (ending_ || std::exchange(cancels_, false)) ? Answer::kCancel
                                                                                      : Answer::kOk;
}

void TestWindows::AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds,
                                 SaveAnswer answer) {
  proposed_ = name;
  for (const FileKind& kind : kinds) {
    proposed_.append(" ").append(kind.name).append(" (").append(kind.extension).append(")");
  }
  if (!saveTo_.first.empty()) answer(saveTo_.first, saveTo_.second);
}

}  // namespace ox::test
