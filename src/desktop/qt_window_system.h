// The window system on Qt Widgets.
#pragma once

#include <QWidget>
#include <vector>

#include "desktop/event_pump.h"
#include "desktop/view.h"
#include "platform/open_ports.h"
#include "ui/window_system.h"

namespace ox {

/// Needs a QApplication, and lives shorter than it. The first window shown is the main window; every other is
/// shown over the one before it.
class QtWindowSystem : public WindowSystem {
 public:
  /// `ports` are those that Rest waits on; they outlive the window system.
  explicit QtWindowSystem(const OpenPorts& ports) : pump_(ports) {}

  void Yield() override { pump_.Yield(); }
  void Rest() override { pump_.Rest(); }
  void ShowModal(Window& window) override;
  using WindowSystem::ShowMessage;
  Answer ShowMessage(std::string_view text, Buttons buttons) override;
  void EndProgram() override;

 private:
  /// The form of the uppermost window on the screen; null when there is none.
  QWidget* Uppermost() const;

  EventPump pump_;
  std::vector<View*> shown_;  // the main window first
};

}  // namespace ox
