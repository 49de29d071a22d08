// The one place where all windows are put together.
#pragma once

#include "app/start.h"
#include "chooser/chooser_values.h"
#include "chooser/file_chooser.h"
#include "session/subs.h"
#include "ui/host.h"

namespace ox {

/// The program between its host and its windows: owns the session's values, the main window and the file
/// chooser, and makes every other window when the menu opens it.
class Program {
 public:
  /// The host outlives the program.
  explicit Program(Host& host);

  Start& MainWindow() { return start_; }
  const Subs& Values() const { return subs_; }

 private:
  StartCommands Commands();

  /// Makes a window, shows it and lets it go when it is closed.
  template <class NewWindow, class... Arguments>
  void Show(Arguments&... arguments) {
    NewWindow window(host_, arguments...);
    host_.windows.ShowModal(window);
  }

  Host& host_;
  ChooserValues chooserValues_;
  Subs subs_{{}, chooserValues_};
  FileChooser chooser_;
  Start start_;
};

}  // namespace ox
