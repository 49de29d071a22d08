// A user at the real widgets, who waits until the screen shows what he wants to touch.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

class QWidget;

namespace ox::test {

/// The user thinks on a thread of his own and acts in the program's, so that his day reads as one sequence
/// though windows nest. Whatever he touches or reads must be on the uppermost window, visible and usable; he
/// waits for it, and throws std::runtime_error, telling what is on the screen, when it does not come. Texts
/// are UTF-8.
class DayDriver {
 public:
  /// Runs the program here and the user's day beside it. A user who gets stuck closes everything.
  static void Run(const std::function<void()>& program, const std::function<void(DayDriver&)>& day);

  /// Clicks the entry in the main window's menu bar, through its menu where it is in one.
  void ChooseMenu(const std::string& entry);

  /// Waits until the window with this caption is the uppermost; what follows is meant for it.
  void AwaitWindow(const std::string& caption);
  /// Clicks a button or a check box.
  void Click(const std::string& name);
  /// Replaces what is in the field.
  void Type(const std::string& name, const std::string& text);
  /// Clicks the line of a list.
  void ClickLine(const std::string& list, const std::string& line);
  /// Closes the uppermost window by its close box.
  void CloseWindow();

  /// Waits until the button or check box can be used.
  void AwaitEnabled(const std::string& name);
  /// What the widget says now. While a message box is open, the window below it is read.
  std::string Text(const std::string& name);
  /// The texts of several widgets at one moment, as soon as `ready` is content with them.
  using Texts = std::map<std::string, std::string>;
  Texts AwaitTexts(const std::vector<std::string>& names, const std::function<bool(const Texts&)>& ready);

  /// Expects a message box with exactly this text and clicks the button.
  void Answer(const std::string& text, const std::string& button = "OK");

  /// Every text that a label of this name has been painted with since it was last asked for.
  std::vector<std::string> Painted(const std::string& label);

 private:
  using Action = std::function<void()>;

  /// Has the program's thread look until the look gives an action, then do it; does not wait for its end.
  void Do(const std::string& what, const std::function<Action()>& look);
  static void CloseEverything();
};

}  // namespace ox::test
