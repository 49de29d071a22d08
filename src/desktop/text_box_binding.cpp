// Text boxes: fields to type in, and traces that grow.
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextCursor>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "desktop/control_ties.h"
#include "desktop/display_menu.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

/// A reader's place in a text: what is in sight, the cursor, and what is selected.
struct Place {
  int top = 0;
  int left = 0;
  int anchor = 0;
  int position = 0;
};

Place PlaceIn(const QPlainTextEdit& widget) {
  const QTextCursor cursor = widget.textCursor();
  return {widget.verticalScrollBar()->value(), widget.horizontalScrollBar()->value(), cursor.anchor(),
          cursor.position()};
}

/// Goes to the place, or as near to it as the text allows.
void GoTo(const Place& place, QPlainTextEdit& widget) {
  QTextCursor cursor(widget.document());
  const int end = widget.document()->characterCount() - 1;
  cursor.setPosition(std::min(place.anchor, end));
  cursor.setPosition(std::min(place.position, end), QTextCursor::KeepAnchor);
  widget.setTextCursor(cursor);
  widget.verticalScrollBar()->setValue(place.top);
  widget.horizontalScrollBar()->setValue(place.left);
}

/// Shows a text that grows, at the cost of what was added. When the text is replaced, its reader keeps his
/// place. The widget owns it.
class Trace : public QObject {
 public:
  Trace(const TextBox& control, QPlainTextEdit& widget)
      : QObject(&widget), control_(control), widget_(widget) {}

  void Show(Change change) {
    ShowCommon(control_, widget_, change);
    if (change == Change::kText) Replace();
    if (change == Change::kCut) cut_ = true;
    if (change == Change::kAppended || change == Change::kCut) ShowMoreSoon();
  }

 private:
  void Replace() {
    if (shown_ > 0) place_ = PlaceIn(widget_);  // an empty text between two others has no place of its own
    widget_.setPlainText(OnScreen(control_.Text()));
    shown_ = control_.Text().size();
    cut_ = false;
    if (shown_ > 0) GoTo(place_, widget_);
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
    if (std::exchange(cut_, false)) {
      widget_.clear();
      shown_ = 0;
    }
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
  Place place_;            // where the reader stood in the last text
  std::size_t shown_ = 0;  // bytes of the control's text
  bool due_ = false;       // more is to be shown soon
  bool cut_ = false;       // the control has dropped what is shown first
};

/// Shows that a field was refused: red is mixed into its ground, bright or dark, and a screen reader says so.
void ShowMark(QLineEdit& widget, bool marked) {
  constexpr int kRedPercent = 30;
  QPalette palette;
  const QColor ground = palette.color(QPalette::Base);
  const auto mix = [](int from, int to) { return from + (to - from) * kRedPercent / 100; };
  palette.setColor(QPalette::Base,
                   QColor(mix(ground.red(), 255), mix(ground.green(), 0), mix(ground.blue(), 0)));
  widget.setPalette(marked ? palette : QPalette());
  widget.setAccessibleDescription(marked ? QStringLiteral("Eingabe prüfen") : QString());
}

}  // namespace

void TieField(TextBox& control, QLineEdit& widget) {
  const auto show = [&control, &widget] {
    const QSignalBlocker quiet(widget);
    widget.setText(QString::fromStdString(control.Text()));
  };
  QObject::connect(&widget, &QLineEdit::returnPressed, &widget,
                   [&control, &widget] { ByHand(widget, [&] { control.Enter(); }); });
  // Every change, not only what is typed: a screen reader or a voice sets the text as a whole.
  QObject::connect(&widget, &QLineEdit::textChanged, &widget, [&control, &widget, show](const QString& text) {
    if (!ByHand(widget, [&] { control.Edit(text.toStdString()); })) show();
  });
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText},
         [&control, &widget, show](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::kText || change == Change::kAppended) show();
           if (change == Change::kMarked) ShowMark(widget, control.Marked());
         });
}

void TieTrace(TextBox& control, QPlainTextEdit& widget) {
  GiveDisplayMenu(control, widget);
  widget.setUndoRedoEnabled(false);  // nobody undoes a trace, and its steps would be kept for ever
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText},
         [trace = new Trace(control, widget)](Change change) { trace->Show(change); });
}

}  // namespace ox
