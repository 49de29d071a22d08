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
constexpr double kMillisecondsPerSecond = 1000;

double Interval(const Timer& timer) {
  return timer.IntervalMilliseconds() / kMillisecondsPerSecond;
}

}  // namespace

void TestWindows::In(double seconds, std::function<void()> action) {
  actions_.push_back({clock_.Elapsed() + seconds, std::move(action)});
}

std::vector<std::string> TestWindows::TakeMessages() {
  std::vector<std::string> taken(messages_.begin() + static_cast<std::ptrdiff_t>(messagesTaken_),
                                 messages_.end());
  messagesTaken_ = messages_.size();
  return taken;
}

void TestWindows::OpenMain(Window& window) {
  Enter(window);
  OpenAndActivate(window);
}

void TestWindows::OpenAndActivate(Window& window) {
  const Exposure exposure;
  window.Open();
  window.Activate();
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
  WaitUntil(clock_.Elapsed() + (ports_.InputWaiting() ? kRoundSeconds : kRestSeconds));
}

void TestWindows::WaitUntil(double limit) {
  Yield();
  const double next = std::max(NextEvent(limit), clock_.Elapsed());
  clock_.Advance(next - clock_.Elapsed());
  Yield();
}

double TestWindows::NextEvent(double limit) const {
  double next = limit;
  if (const auto input = ports_.NextInput(); input && *input > clock_.Elapsed())
    next = std::min(next, *input);
  for (const Due& due : actions_) next = std::min(next, due.when);
  for (const RunningTimer& running : timers_) {
    if (running.since) next = std::min(next, *running.since + Interval(*running.timer));
  }
  return next;
}

void TestWindows::RunDueActions() {
  for (;;) {
    const auto due =
        std::ranges::find_if(actions_, [this](const Due& d) { return d.when <= clock_.Elapsed(); });
    if (due == actions_.end()) return;
    const auto action = std::move(due->action);
    actions_.erase(due);
    action();
  }
}

void TestWindows::TickTimers() {
  // By index: a tick may open further windows.
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    RunningTimer& running = timers_[i];
    if (!running.timer->Enabled()) {
      running.since.reset();
    } else if (!running.since) {
      running.since = clock_.Elapsed();
    } else if (clock_.Elapsed() >= *running.since + Interval(*running.timer)) {
      running.since = clock_.Elapsed();
      const Exposure exposure;
      running.timer->Tick();
    }
  }
}

void TestWindows::Enter(Window& window) {
  for (Control* control : window.Controls()) {
    if (auto* timer = dynamic_cast<Timer*>(control)) timers_.push_back({&window, timer, std::nullopt});
  }
}

void TestWindows::Leave(Window& window) {
  std::erase_if(timers_, [&](const RunningTimer& running) { return running.window == &window; });
}

void TestWindows::ShowModal(Window& window) {
  const Shelter shelter;
  Enter(window);
  OpenAndActivate(window);
  if (window.IsOpen()) {
    const auto script = scripts_.find(window.Name());
    if (script == scripts_.end()) {
      const Exposure exposure;
      window.RequestClose();
    } else {
      script->second(window);
    }
  }
  const double limit = clock_.Elapsed() + kLongestShowing;
  while (window.IsOpen() && clock_.Elapsed() < limit) WaitUntil(limit);
  if (window.IsOpen()) {
    ADD_FAILURE() << "nobody closes the window " << window.Name();
    window.RequestClose();
  }
  Leave(window);
}

ox::Answer TestWindows::ShowMessage(std::string_view text, Buttons buttons) {
  const Shelter shelter;
  messages_.emplace_back(text);
  if (observer_) observer_(messages_.back());
  if (buttons == Buttons::Ok || answers_.empty()) return ox::Answer::Ok;
  const ox::Answer answer = answers_.front();
  answers_.pop_front();
  return answer;
}

}  // namespace ox::test
