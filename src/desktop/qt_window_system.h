// The window system on Qt Widgets.
#pragma once

#include <QWidget>
#include <utility>
#include <vector>

#include "desktop/event_pump.h"
#include "desktop/frame_guard.h"
#include "desktop/ready_notifier.h"
#include "desktop/save_question.h"
#include "desktop/session_end.h"
#include "desktop/view.h"
#include "desktop/window_places.h"
#include "platform/end_requests.h"
#include "platform/keep_awake.h"
#include "platform/open_ports.h"
#include "ui/window_system.h"

namespace ox {

/// Needs a QApplication, and lives shorter than it. The first window shown is the main window; every other is
/// shown over the one before it.
///
/// When the host or the desktop session asks the program to end, every window is asked to close. A run that
/// writes a device ends first, and with it all that it shows; the end of the session is refused meanwhile.
/// Message boxes are answered as if they were closed, and told on the standard error stream. From then on
/// ShowModal shows only what a run needs.
class QtWindowSystem : public WindowSystem {
 public:
  /// `ports` are those that Rest waits on; `awake` says whether a run is under way. All outlive the window
  /// system. `places` tells where the windows stand.
  QtWindowSystem(const OpenPorts& ports, const EndRequests& requests, const KeepAwake& awake,
                 WindowPlaces places = WindowPlaces());

  void Yield() override { pump_.Yield(); }
  void Rest() override { pump_.Rest(); }
  void ShowModal(Window& window) override;
  using WindowSystem::ShowMessage;
  Answer ShowMessage(std::string_view text, Buttons buttons) override;
  void AskWhereToSave(std::string_view name, const std::vector<FileKind>& kinds, SaveAnswer answer) override;
  void EndProgram() override;

 private:
  /// The form of the uppermost window on the screen; null when there is none.
  QWidget* Uppermost() const;
  void RequestEnd();

  const KeepAwake& awake_;
  EventPump pump_;
  const WindowPlaces places_;
  SaveQuestion saveQuestion_;
  std::vector<View*> shown_;  // the main window first
  bool ending_ = false;
  ReadyNotifier endRequest_;
  SessionEnd sessionEnd_;
  FrameGuard frameGuard_;
};

}  // namespace ox
