// The program's real host, with a desk in front of it: a working folder of its own and somebody who uses the
// windows.
#pragma once

#include <QApplication>
#include <deque>
#include <functional>
#include <string>

#include "desktop/qt_window_system.h"
#include "journal/journaled_host.h"
#include "platform/posix/posix_host.h"
#include "support/scratch_folder.h"
#include "ui/host.h"

namespace ox::bench {

/// Shows windows on the real window system and does what a user would do with message boxes and the file
/// chooser.
class PlayedUser : public WindowSystem {
 public:
  explicit PlayedUser(WindowSystem& real) : real_(real) {}

  /// What the user types into the file chooser from now on.
  void WillChoose(const std::string& path) { choice_ = path; }
  /// The last message box; empty when there was none.
  const std::string& LastMessage() const { return lastMessage_; }

  /// Shows a window, does something with it once it is on the screen, and closes it.
  void Use(Window& window, const std::function<void()>& action);

  void Yield() override { real_.Yield(); }
  void Rest() override { real_.Rest(); }
  void ShowModal(Window& window) override;
  using WindowSystem::ShowMessage;
  Answer ShowMessage(std::string_view text, Buttons buttons) override;
  void AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds, SaveAnswer answer) override {
    real_.AskWhereToSave(name, kinds, std::move(answer));
  }
  void EndProgram() override { real_.EndProgram(); }

 private:
  WindowSystem& real_;
  std::string choice_;
  std::string lastMessage_;
};

/// One per program. Without a DISPLAY the windows are painted off the screen. With OX_BENCH_LOG=0 in the
/// environment there is no support log.
struct Desk {
  Desk(int& argumentCount, char** arguments);

  /// The host with the ports given, noted in the support log; they outlive what uses it.
  Host HostWith(SerialPorts& ports);

  ScratchFolder folder;
  QApplication application;
  PosixHost posix;
  Notices notices;
  QtWindowSystem windows{posix.openPorts, posix.endRequests, posix.awake};
  PlayedUser user{windows};
  Journal journal;

 private:
  struct NotedHost {
    NotedHost(const Host& host, Journal& journal) : plain(host), noted(plain, journal) {}
    Host plain;
    JournaledHost noted;
  };
  std::deque<NotedHost> hosts_;
};

}  // namespace ox::bench
