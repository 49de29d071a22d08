// Playing the user on the real window system.
#include "bench/desk.h"

#include <QTimer>

#include <cstdlib>
#include <filesystem>

#include "chooser/dateiwahl.h"
#include "journal/journal_folder.h"
#include "ui/window.h"

namespace ox::bench {
namespace {

/// Runs an action as soon as events are handled again, which is when the window is on the screen.
void Soon(std::function<void()> action) {
  QTimer::singleShot(0, std::move(action));
}

int& WithPlatform(int& argumentCount) {
  if (std::getenv("DISPLAY") == nullptr) qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_NO_GLIB", "1");  // as the program has it
  return argumentCount;
}

/// In the working folder; it switches the support log on.
Files& WithLogFolder(Files& files) {
  const char* const wanted = std::getenv("OX_BENCH_LOG");
  if (wanted == nullptr || std::string(wanted) != "0") std::filesystem::create_directory(kJournalFolder);
  return files;
}

}  // namespace

void PlayedUser::Use(Window& window, const std::function<void()>& action) {
  Soon([&] {
    QApplication::processEvents();  // the first painting is over before anything is measured
    action();
    window.RequestClose();
  });
  real_.ShowModal(window);
}

void PlayedUser::ShowModal(Window& window) {
  if (auto* chooser = dynamic_cast<Dateiwahl*>(&window)) {
    Soon([this, chooser] {
      chooser->Text2.Edit(choice_);
      chooser->Command1.Click();
    });
  }
  real_.ShowModal(window);
}

Answer PlayedUser::ShowMessage(std::string_view text, Buttons /*buttons*/) {
  lastMessage_ = text;
  return Answer::kOk;
}

Desk::Desk(int& argumentCount, char** arguments)
    : application(WithPlatform(argumentCount), arguments),
      journal(WithLogFolder(posix.files), posix.clock, "bench", {}) {
  QApplication::setQuitOnLastWindowClosed(false);
}

Host Desk::HostWith(SerialPorts& ports) {
  const Host plain{
      {user, posix.clock, ports, posix.files, posix.random, posix.awake, posix.portList}, user, notices};
  return hosts_.emplace_back(plain, journal).noted.host;
}

}  // namespace ox::bench
