// The life of a view, and how it asks its window to close.
#include "desktop/view.h"

#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>

#include "desktop/bindings.h"
#include "desktop/border.h"
#include "desktop/file_drops.h"
#include "desktop/forms.h"
#include "desktop/manual.h"
#include "desktop/title_bar.h"

namespace ox {

View::View(Window& window, QWidget* parent, const WindowPlaces& places)
    : window_(window), places_(places), form_(MakeForm(window.Form(), parent)) {
  if (form_ == nullptr) return;
  SetTitleBar(*form_, QString::fromStdString(window.Caption()));
  if (parent != nullptr) form_->setWindowModality(Qt::ApplicationModal);
  form_->installEventFilter(this);
  complete_ = TieControls();
  const auto& controls = window.Controls();
  if (std::ranges::any_of(controls, &Control::TakesFiles))
    new FileDrops(window, *form_);  // owned by the form
  window.ConnectClosed([this] { Leave(); });
}

View::~View() {
  window_.ConnectClosed({});
  for (Control* control : window_.Controls()) control->ConnectView({});
}

bool View::TieControls() {
  bool all = true;
  for (Control* control : window_.Controls()) all = TieControl(*control, *form_) && all;
  return all;
}

void View::Run() {
  window_.Open();
  if (!window_.IsOpen()) return;
  places_.Restore(*form_);
  form_->show();
  window_.Activate();
  if (!window_.IsOpen()) return;
  loop_.exec();
  if (window_.IsOpen()) window_.RequestClose();  // the toolkit has left its loops by itself
}

void View::Leave() {
  if (form_->isVisible()) places_.Keep(*form_);  // a window may go before it was on the screen
  form_->hide();
  loop_.quit();
}

bool View::eventFilter(QObject* watched, QEvent* event) {
  if (watched != form_.get()) return false;
  if (event->type() == QEvent::Close) {
    event->ignore();  // the window decides when it goes
    AtBorder([this] { window_.RequestClose(); });
    return true;
  }
  return event->type() == QEvent::KeyPress && UseKey(*static_cast<QKeyEvent*>(event));
}

bool View::UseKey(const QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_F1 && event.modifiers() == Qt::NoModifier) {
    if (!event.isAutoRepeat()) AtBorder([this] { OpenManual(*form_, window_.Form()); });
    return true;
  }
  if (qobject_cast<QDialog*>(form_.get()) == nullptr) return false;
  if (key == Qt::Key_Escape) {
    AtBorder([this] { window_.RequestClose(); });
    return true;
  }
  auto* button = qobject_cast<QPushButton*>(form_->focusWidget());
  if (button == nullptr || (key != Qt::Key_Return && key != Qt::Key_Enter)) return false;
  button->click();  // a dialogue would click its default button instead
  return true;
}

}  // namespace ox
