// A view shows one window: its form, tied to its controls, from its appearance to its end.
#pragma once

#include <QEventLoop>
#include <QKeyEvent>
#include <QObject>
#include <QWidget>
#include <memory>

#include "desktop/window_places.h"
#include "ui/window.h"

namespace ox {

class View : public QObject {
 public:
  /// Ties the form to the window's controls, and shows it where `places` says; both outlive the view. With a
  /// parent the form is shown over it, and nothing else of the program can be used meanwhile.
  View(Window& window, QWidget* parent, const WindowPlaces& places);
  ~View() override;

  /// False when the window has no form or a control has no widget: it cannot be shown then.
  bool Complete() const { return complete_; }

  /// Loads and shows the window, and returns when it has gone from the screen.
  void Run();

  /// The program is to end: the window closes when its command has ended.
  void RequestEnd() { window_.RequestEnd(); }

  QWidget* Form() const { return form_.get(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TieControls();
  void Leave();
  /// Keys that the form itself would use otherwise; true when the key is done with.
  bool UseKey(const QKeyEvent& event);

  Window& window_;
  const WindowPlaces& places_;
  std::unique_ptr<QWidget> form_;
  bool complete_ = false;
  QEventLoop loop_;
};

}  // namespace ox
