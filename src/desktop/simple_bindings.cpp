// Buttons, check boxes, labels and timers.
#include <QApplication>
#include <QSignalBlocker>
#include <QTimer>
#include <utility>

#include "desktop/border.h"
#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {
namespace {

/// Hands on every turn of a check box's mark: by a click at once, and by assistive technology, which turns
/// the mark without a click, with the next events, since it waits while its request is carried out.
class CheckBoxUser : public QObject {
 public:
  CheckBoxUser(CheckBox& control, QCheckBox& widget) : QObject(&widget), control_(control), widget_(widget) {
    connect(&widget, &QCheckBox::toggled, this, [this] {
      ++turns_;
      QMetaObject::invokeMethod(
          this, [this] { HandOn(); }, Qt::QueuedConnection);
    });
    connect(&widget, &QCheckBox::clicked, this, [this] { HandOn(); });
  }

  void ShowMark() {
    const QSignalBlocker quiet(widget_);
    widget_.setChecked(control_.Checked());
  }

 private:
  void HandOn() {
    if (turns_ == 0) return;
    --turns_;
    ByHand(widget_, [this] { control_.Click(); });
    ShowMark();  // the widget has turned its mark over already, whatever the control did
  }

  CheckBox& control_;
  QCheckBox& widget_;
  int turns_ = 0;  // not yet handed on
};

}  // namespace

bool WithinReach(const QWidget& widget) {
  const QWidget* box = QApplication::activeModalWidget();
  return widget.isEnabled() && widget.isVisible() && (box == nullptr || box == widget.window());
}

void ShowCommon(const Control& control, QWidget& widget, Change change) {
  if (change == Change::kEnabled) widget.setEnabled(control.Enabled());
  if (change == Change::kVisible) widget.setVisible(control.Visible());
  if (change == Change::kFocus) widget.setFocus();
}

void Follow(Control& control, std::initializer_list<Change> first, Control::View show) {
  for (const Change change : first) show(change);
  control.ConnectView(std::move(show));
}

void TieButton(Button& control, QPushButton& widget) {
  QObject::connect(&widget, &QPushButton::clicked, &widget,
                   [&control, &widget] { ByHand(widget, [&] { control.Click(); }); });
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText}, [&control, &widget](Change change) {
    ShowCommon(control, widget, change);
    if (change == Change::kText) widget.setText(OnScreen(control.Text()));
    if (change == Change::kDefault) widget.setDefault(true);
  });
}

void TieCheckBox(CheckBox& control, QCheckBox& widget) {
  auto* user = new CheckBoxUser(control, widget);  // owned by the widget
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText, Change::kChecked},
         [&control, &widget, user](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::kText) widget.setText(OnScreen(control.Text()));
           if (change == Change::kChecked) user->ShowMark();
         });
}

void TieLabel(Label& control, QLabel& widget) {
  widget.setTextFormat(Qt::PlainText);
  // The form sets this property for a label that is empty most of the time and would take room from other
  // widgets.
  const bool hiddenWhenEmpty = widget.property("hiddenWhenEmpty").toBool();
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kText},
         [&control, &widget, hiddenWhenEmpty](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::kText) widget.setText(OnScreen(control.Text()));
           if (hiddenWhenEmpty) widget.setVisible(control.Visible() && !control.Text().empty());
         });
}

void TieProgressBar(ProgressBar& control, SteadyBar& widget) {
  Follow(control, {Change::kEnabled, Change::kVisible, Change::kProgress},
         [&control, &widget](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::kProgress) widget.SetPercent(control.Percent());
           if (change == Change::kPulse) widget.Pulse();
         });
}

void TieTimer(Timer& control, QWidget& form) {
  auto* ticks = new QTimer(&form);
  ticks->setTimerType(Qt::PreciseTimer);
  ticks->setInterval(control.IntervalMilliseconds());
  QObject::connect(ticks, &QTimer::timeout, ticks, [&control] { AtBorder([&] { control.Tick(); }); });
  Follow(control, {Change::kEnabled}, [&control, ticks](Change change) {
    if (change != Change::kEnabled) return;
    if (control.Enabled()) {
      ticks->start();
    } else {
      ticks->stop();
    }
  });
}

}  // namespace ox
