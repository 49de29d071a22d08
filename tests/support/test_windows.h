// A window system in virtual time with a scripted user.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/test_clock.h"
#include "support/test_ports.h"
#include "ui/controls.h"
#include "ui/window.h"
#include "ui/window_system.h"

namespace ox::test {

class TestWindows : public WindowSystem {
 public:
  TestWindows(TestClock& clock, TestPorts& ports) : clock_(clock), ports_(ports) {}

  /// What the user does with a window once it is shown and its load and activation have ended; without a
  /// script the user closes it. A script that leaves the window open lets time pass until it closes.
  void OnShown(const std::string& name, std::function<void(Window&)> script) {
    scripts_[name] = std::move(script);
  }
  /// What the user does so many seconds from now, also while a command runs.
  void In(double seconds, std::function<void()> action) {
    actions_.push_back({clock_.Elapsed() + seconds, std::move(action)});
  }
  /// The host asks the program to end: all windows are, and message boxes are answered by nobody.
  void RequestEnd();
  /// The user cancels the next question; all others he answers with OK.
  void CancelNext() { cancels_ = true; }
  void OnMessage(std::function<void(const std::string&)> observer) { observer_ = std::move(observer); }

  std::vector<std::string> TakeMessages() { return std::exchange(messages_, {}); }
  /// What the user answers when he is asked where to save; before, he cancels.
  void SaveTo(std::string path, std::size_t kind) { saveTo_ = {std::move(path), kind}; }
  /// What was proposed to him last: the name and the kinds with their extensions.
  const std::string& Proposed() const { return proposed_; }
  bool Ended() const { return ended_; }
  /// The one that takes the user's clicks; null before the main window is opened.
  Window* Uppermost() const { return shown_.empty() ? nullptr : shown_.back(); }

  /// Opens a window as the main window: it stays open beside the test. Close it with RequestClose.
  void OpenMain(Window& window);
  void Pass(double seconds);

  void Yield() override;
  void Rest() override;
  void ShowModal(Window& window) override;
  Answer ShowMessage(std::string_view text, Buttons buttons) override;
  using WindowSystem::ShowMessage;
  void AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds, SaveAnswer answer) override;
  void EndProgram() override { ended_ = true; }

 private:
  struct Due {
    double when;
    std::function<void()> action;
  };

  struct RunningTimer {
    Window* window;
    Timer* timer;
    double due;
  };

  void WaitUntil(double limit);
  void RunDueActions();
  void TickTimers();

  TestClock& clock_;
  TestPorts& ports_;
  std::map<std::string, std::function<void(Window&)>> scripts_;
  std::vector<Due> actions_;
  bool cancels_ = false;
  bool ending_ = false;
  std::function<void(const std::string&)> observer_;
  std::vector<std::string> messages_;
  std::vector<Window*> shown_;  // one over the other
  std::vector<RunningTimer> timers_;
  std::pair<std::string, std::size_t> saveTo_;
  std::string proposed_;
  bool ended_ = false;
};

}  // namespace ox::test
