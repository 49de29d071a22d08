// The controls of a window: each holds what is shown, tells whoever shows it of a change, and is told what
// the user did. Controls are public members of their window; they know no toolkit.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bytes.h"

namespace ox {

class Window;

/// What has changed in a control, so that it is shown anew.
enum class Change {
  kEnabled,
  kVisible,
  kText,
  kAppended,
  kCut,
  kChecked,
  kItems,
  kSelected,
  kFocus,
  kDefault,
  kMarked,
  kHint,
  kProgress,
  kPulse
};

/// What all controls have in common. Texts are UTF-8.
class Control {
 public:
  using View = std::function<void(Change)>;
  using Handler = std::function<void()>;
  using FileHandler = std::function<void(const std::string& path)>;
  using SaveHandler = std::function<void(const Bytes& shown)>;

  /// Joins the window's list of controls; `name` is the objectName of its widget in the window's form.
  Control(Window& window, std::string_view name);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  const std::string& Name() const { return name_; }

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);

  /// Puts the input focus into this control.
  void SetFocus();

  /// Files that fit the pattern ("*.mes", letters in either case) may be dropped on the window: the control
  /// loads them as if the user had chosen them. Paths are UTF-8.
  void TakeFiles(std::string_view pattern, FileHandler onDrop);
  bool TakesFiles() const { return onDrop_ != nullptr; }
  /// Whether it takes this file now.
  bool Takes(std::string_view path) const;
  /// The user dropped a file.
  void Drop(const std::string& path);

  /// The user may save what is shown: a text (UTF-8, lines ended by LF) or a picture (PNG).
  void LetSave(SaveHandler onSave) { onSave_ = std::move(onSave); }
  bool CanBeSaved() const { return onSave_ != nullptr; }
  /// The user wants to.
  void Save(const Bytes& shown);

  /// Sets who shows this control; an empty function when nobody shows it any longer.
  void ConnectView(View view) { view_ = std::move(view); }

 protected:
  void Tell(Change change) const;

  /// Runs a handler of the window for something that the user did, unless the control is disabled or hidden.
  void RunHandler(const Handler& handler);

  /// Whether the user can reach this control at all.
  bool Usable() const { return enabled_ && visible_; }

 private:
  Window& window_;
  std::string name_;
  View view_;
  std::string extension_;  // of the files it takes, with its "."
  FileHandler onDrop_;
  SaveHandler onSave_;
  bool enabled_ = true;
  bool visible_ = true;
};

/// A control with a caption or a content.
class TextControl : public Control {
 public:
  TextControl(Window& window, std::string_view name, std::string_view text)
      : Control(window, name), text_(text) {}

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);

 protected:
  std::string text_;
};

/// A text that the user can read but not change.
class Label : public TextControl {
 public:
  Label(Window& window, std::string_view name, std::string_view text = {})
      : TextControl(window, name, text) {}

  /// Adds to the end of the text.
  void Append(std::string_view text) { SetText(text_ + std::string(text)); }
};

class Button : public TextControl {
 public:
  using TextControl::TextControl;

  /// The user clicked.
  void Click() { RunHandler(onClick); }

  /// Makes this the button that Enter clicks.
  void MakeDefault() { Tell(Change::kDefault); }

  Handler onClick;
};

/// An entry of the menu bar or of one of its menus; "&" marks the access key.
class MenuEntry : public TextControl {
 public:
  using TextControl::TextControl;

  /// What is shown beside the entry while the pointer rests on it.
  const std::string& Hint() const { return hint_; }
  void SetHint(std::string_view hint);

  /// The user chose the entry.
  void Click() { RunHandler(onClick); }
  /// The user opens the menu that the entry is: it is about to be shown.
  void Show() { RunHandler(onShow); }

  Handler onClick;
  Handler onShow;

 private:
  std::string hint_;
};

class CheckBox : public TextControl {
 public:
  using TextControl::TextControl;

  bool Checked() const { return checked_; }

  /// Sets the mark from the program; runs no handler.
  void SetChecked(bool checked);

  /// The user clicked: turns the mark over, then runs the handler.
  void Click();

  Handler onClick;

 private:
  bool checked_ = false;
};

/// A field to type in, of one line or, for traces and displays, of many.
class TextBox : public TextControl {
 public:
  TextBox(Window& window, std::string_view name, std::string_view text = {})
      : TextControl(window, name, text) {}

  /// Adds to the end of the text and shows the end. The cost depends on what is added, not on what is there
  /// already.
  void Append(std::string_view text);

  /// Drops the oldest lines of a text that has grown to more than twice as many bytes, so that at most these
  /// are left. Cutting so seldom keeps its cost below that of the growth.
  void KeepNewest(std::size_t most);

  void SetText(std::string_view text);

  /// Marks the content as one that was refused, until it changes.
  void SetMarked(bool marked);
  bool Marked() const { return marked_; }

  /// The user typed: the content is now `text`.
  void Edit(std::string_view text);
  /// The user pressed Enter in the field.
  void Enter() { RunHandler(onEnter); }

  Handler onChange;
  Handler onEnter;

 private:
  bool marked_ = false;
};

/// A list to choose one line from.
class ListBox : public Control {
 public:
  static constexpr int kNone = -1;

  using Control::Control;

  const std::vector<std::string>& Items() const { return items_; }

  /// Replaces the lines; none is selected then.
  void SetItems(std::vector<std::string> items);

  /// Index of the selected line, or kNone.
  int Selected() const { return selected_; }
  /// Text of the selected line; empty when there is none.
  std::string SelectedItem() const;

  /// Selects from the program; runs no handler. An index that does not exist selects nothing.
  void SetSelected(int index);

  /// The user selected a line (a click, the arrow keys).
  void Select(int index);

  /// The user chose a line for good (a double click, Enter).
  void Activate(int index);

  Handler onSelect;
  Handler onActivate;

 private:
  bool Has(int index) const { return index >= 0 && index < static_cast<int>(items_.size()); }

  std::vector<std::string> items_;
  int selected_ = kNone;
};

/// How far a command has come: a share of the whole or, while that is not known, something that moves.
class ProgressBar : public Control {
 public:
  using Control::Control;

  /// 0 to 100.
  int Percent() const { return percent_; }
  void SetPercent(int percent);

  /// Whether the share is not known. It moves on with every pulse until a share is set.
  bool Busy() const { return busy_; }
  void Pulse();

 private:
  int percent_ = 0;
  bool busy_ = false;
};

/// Ticks while it is enabled; at first it is disabled. A tick that comes while the handler still runs calls
/// it nested.
class Timer : public Control {
 public:
  Timer(Window& window, std::string_view name, int intervalMilliseconds);

  int IntervalMilliseconds() const { return interval_; }

  /// The interval is over.
  void Tick() { RunHandler(onTick); }

  Handler onTick;

 private:
  int interval_;
};

}  // namespace ox
