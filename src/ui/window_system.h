// What the program asks of the window system.
#pragma once

#include <string_view>

#include "platform/event_loop.h"

namespace ox {

class Window;

enum class Buttons { kOk, kOkCancel };
enum class Answer { kOk, kCancel };

class WindowSystem : public EventLoop {
 public:
  /// Shows the window over all others and returns when it has been unloaded or hidden. The window stays its
  /// owner's.
  virtual void ShowModal(Window& window) = 0;

  /// Shows a message box with the program's title; `text` is UTF-8, its lines end with CR LF, CR or LF.
  /// Closing the box without a choice answers Cancel where there is such a button, else Ok.
  virtual Answer ShowMessage(std::string_view text, Buttons buttons) = 0;

  /// A handler of a window has ended and none runs any longer: the user has his turn. Must not throw.
  virtual void CommandEnded() noexcept {}

  /// Ends the program at once: no window is asked, no unload handler runs.
  virtual void EndProgram() = 0;

  Answer ShowMessage(std::string_view text) { return ShowMessage(text, Buttons::kOk); }
};

}  // namespace ox
