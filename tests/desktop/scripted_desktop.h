// A user at the real widgets: what is scripted happens inside the next event loop.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/qt_window_system.h"
#include "platform/controls.h"

namespace ox::test {

/// Lets the user act as soon as an event loop runs.
inline void Later(std::function<void()> action) {
  QTimer::singleShot(0, qApp, std::move(action));
}

/// The uppermost window or message box.
inline QWidget* Top() {
  return QApplication::activeModalWidget();
}

template <class Widget = QPushButton>
Widget* Find(const char* name) {
  Widget* widget = Top() != nullptr ? Top()->findChild<Widget*>(QString::fromUtf8(name)) : nullptr;
  if (widget == nullptr) throw std::runtime_error(std::string("no widget ") + name);
  return widget;
}

inline void Click(const char* name) {
  QTest::mouseClick(Find(name), Qt::LeftButton);
}

inline void Press(Qt::Key key) {
  QWidget* focus = Top()->focusWidget();
  QTest::keyClick(focus != nullptr ? focus : Top(), key);
}

/// A window over an existing form, whose two buttons do what the test wants.
class TwoButtons : public Window {
 public:
  explicit TwoButtons(WindowSystem& windows) : Window(windows, "updatepro", "Zwei Knöpfe") {}

  Button ProStart{*this, "ProStart", "Arbeiten"};
  Button proEnd{*this, "proEnd", "Verlassen"};

  void Leave() { Unload(); }

  std::vector<std::string> happened;

 protected:
  void OnLoad() override { happened.emplace_back("load"); }
  void OnActivate() override { happened.emplace_back("activate"); }
  void OnCloseWhileRunning() override { happened.emplace_back("close while running"); }
  void OnUnload() override { happened.emplace_back("unload"); }
};

/// The window system under test, with no port open.
struct Desktop {
  /// A window must be the main window before others are shown over it.
  Desktop() { main.ConnectClosed({}); }

  OpenPorts ports;
  QtWindowSystem windows{ports};
  TwoButtons main{windows};
};

}  // namespace ox::test
