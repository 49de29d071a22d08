// What the program asks of the window system.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event_loop.h"

namespace ox {

class Window;

enum class Buttons { kOk, kOkCancel };
enum class Answer { kOk, kCancel };

/// A kind of file: its name, German, and its extension without a dot.
struct FileKind {
  std::string_view name;
  std::string_view extension;
};

/// Called with the path (UTF-8) that the user chose, and which of the kinds.
using SaveAnswer = std::function<void(const std::string& path, std::size_t kind)>;

class WindowSystem : public EventLoop {
 public:
  /// Shows the window over all others and returns when it has been unloaded or hidden. The window stays its
  /// owner's.
  virtual void ShowModal(Window& window) = 0;

  /// Shows a message box with the program's title; `text` is UTF-8, its lines end with CR LF, CR or LF.
  /// Closing the box without a choice answers Cancel where there is such a button, else Ok.
  virtual Answer ShowMessage(std::string_view text, Buttons buttons) = 0;

  /// Asks the user over the uppermost window where to save, and as which of the kinds; `name` is proposed,
  /// without extension. Returns at once: what runs goes on. The answer comes with later events; none comes
  /// when the user cancels or that window goes.
  virtual void AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds,
                              SaveAnswer answer) = 0;

  /// A handler of a window has ended and none runs any longer: the user has his turn. Must not throw.
  virtual void CommandEnded() noexcept {}

  /// Ends the program at once: no window is asked, no unload handler runs.
  virtual void EndProgram() = 0;

  Answer ShowMessage(std::string_view text) { return ShowMessage(text, Buttons::kOk); }
};

}  // namespace ox
