// Text boxes: fields to type in, and traces that grow.
#include <QTextCursor>
#include <cstddef>

#include "desktop/border.h"
#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

/// Shows a growing text at the cost of what was added.
class Trace {
 public:
  Trace(const TextBox& control, QPlainTextEdit& widget) : control_(control), widget_(widget) {}

  void Show(Change change) {
    ShowCommon(control_, widget_, change);
    if (change == Change::Text) Replace();
    if (change == Change::Appended) ShowMore();
  }

 private:
  void Replace() {
    widget_.setPlainText(OnScreen(control_.Text()));
    shown_ = control_.Text().size();
  }

  void ShowMore() {
    const std::string_view added = std::string_view(control_.Text()).substr(shown_);
    shown_ = control_.Text().size();
    QTextCursor end(widget_.document());
    end.movePosition(QTextCursor::End);
    end.insertText(OnScreen(added));
    widget_.setTextCursor(end);  // the newest line is in sight, and a selection gives way to it
  }

  const TextBox& control_;
  QPlainTextEdit& widget_;
  std::size_t shown_ = 0;  // bytes of the control's text
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
         [trace = Trace(control, widget)](Change change) mutable { trace.Show(change); });
}

}  // namespace ox
