// A window without a toolkit: its controls, its life from load to unload, and how closing waits for a
// command.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/window_system.h"

namespace ox {

class Control;

/// Base of every window. A window is made by its owner, shown by the window system (Open, Activate) and gone
/// from the screen when IsOpen turns false. Its controls are public members, its handlers private.
class Window {
 public:
  /// `name` is the window's own; `caption` is UTF-8. Windows that look alike share a form: it bears the
  /// window's name when none is given.
  Window(WindowSystem& windows, std::string_view name, std::string_view caption, std::string_view form = {});
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  const std::string& Form() const { return form_; }

  /// In the order of their declaration.
  const std::vector<Control*>& Controls() const { return controls_; }

  // What the window system calls.

  /// The window is about to appear: runs OnLoad when it is not loaded.
  void Open();
  /// The window is on the screen: runs OnActivate.
  void Activate();
  /// The user clicked the close box or pressed Esc. While a command runs, the window is only told, and goes
  /// when the command has ended.
  void RequestClose();
  /// The program is to end. Like RequestClose, but the window goes however the command ends.
  void RequestEnd();
  bool IsOpen() const { return open_; }
  /// Called once whenever the window goes from the screen.
  void ConnectClosed(std::function<void()> closed) { closed_ = std::move(closed); }

  /// The control that asked last for the input focus; null when none has.
  Control* Focused() const { return focused_; }

  // What controls and commands call.

  void Add(Control& control) { controls_.push_back(&control); }
  void NoteFocus(Control& control) { focused_ = &control; }
  /// Forgets that the user wanted to close while a command ran: the window stays, unless the program is to
  /// end.
  void ForgetCloseRequest() { closeRequested_ = endRequested_; }
  /// Runs one of the window's handlers as a command. A handler that is left by an exception is reported to
  /// the user, and OnFailure sets the window right.
  void Run(const std::function<void()>& handler);

 protected:
  virtual void OnLoad() {}
  virtual void OnActivate() {}
  /// The user wants to close while a command runs: set the flag that ends the command, if it has one.
  virtual void OnCloseWhileRunning() {}
  /// The user closes and no command runs; unloads the window unless it wants otherwise.
  virtual void OnClose() { Unload(); }
  virtual void OnUnload() {}
  /// A handler was left by an exception: bring buttons and port back to their idle state. Must not throw.
  virtual void OnFailure() {}

  /// Takes the window from the screen and unloads it: the next showing loads it anew.
  void Unload();
  /// Takes the window from the screen; it stays loaded.
  void Hide();

  WindowSystem& windows_;

 private:
  void LeaveScreen();

  std::string name_;
  std::string caption_;
  std::string form_;
  std::vector<Control*> controls_;
  std::function<void()> closed_;
  Control* focused_ = nullptr;
  int running_ = 0;  // handlers under way, nested ones included
  bool loaded_ = false;
  bool open_ = false;
  bool closeRequested_ = false;
  bool endRequested_ = false;
};

}  // namespace ox
