// Text boxes: fields to type in, and traces that grow.
#include <QTextCursor>
#include <cstddef>
#include <utility>

#include "desktop/border.h"
#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

/// Shows a growing text at the cost of what was added. The widget owns it.
class Trace : public QObject {
 public:
  Trace(const TextBox& control, QPlainTextEdit& widget)
      : QObject(&widget), control_(control), widget_(widget) {}

  void Show(Change change) {
    ShowCommon(control_, widget_, change);
    if (change == Change::Text) Replace();
    if (change == Change::Appended) ShowMoreSoon();
  }

 private:
  void Replace() {
    widget_.setPlainText(OnScreen(control_.Text()));
    shown_ = control_.Text().size();
  }

  /// With the next events, not at once: the device must not wait for the
  /// screen, and many additions cost no more than one.
  void ShowMoreSoon() {
    if (std::exchange(due_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { AtBorder([this] { ShowMore(); }); }, Qt::QueuedConnection);
  }

  void ShowMore() {
    due_ = false;
    const std::string_view added = std::string_view(control_.Text()).substr(shown_);
    if (added.empty()) return;
    shown_ = control_.Text().size();
    QTextCursor end(widget_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(OnScreen(added));
    widget_.setTextCursor(end);  // the newest line is in sight, and a selection gives way to it
  }

  const TextBox& control_;
  QPlainTextEdit& widget_;
  std::size_t shown_ = 0;  // bytes of the control's text
  bool due_ = false;       // more is to be shown soon
};

}  // namespace

void TieField(TextBox& control, QLineEdit& widget) {
  QObject::connect(&widget, &QLineEdit::textEdited, &widget, [&control](const QString& typed) {
    AtBorder([&] { control.Edit(typed.toStdString()); });
  });
  Follow(control, {Change::Enabled, Change::Visible, Change::Text}, [&control, &widget](Change change) {
    ShowCommon(control, widget, change);
    if (change == Change::Text || change == Change::Appended) {
      widget.setText(QString::fromStdString(control.Text()));
    }
  });
}

void TieTrace(TextBox& control, QPlainTextEdit& widget) {
  widget.setUndoRedoEnabled(false);  // nobody undoes a trace, and its steps would be kept for ever
  Follow(control, {Change::Enabled, Change::Visible, Change::Text},
         [trace = new Trace(control, widget)](Change change) { trace->Show(change); });
}

}  // namespace ox
