// Buttons, check boxes, labels and timers.
#include <QTimer>
#include <utility>

#include "desktop/border.h"
#include "desktop/control_ties.h"
#include "desktop/screen_text.h"

namespace ox {

void ShowCommon(const Control& control, QWidget& widget, Change change) {
  if (change == Change::Enabled) widget.setEnabled(control.Enabled());
  if (change == Change::Visible) widget.setVisible(control.Visible());
  if (change == Change::Focus) widget.setFocus();
}

void Follow(Control& control, std::initializer_list<Change> first, Control::View show) {
  for (const Change change : first) show(change);
  control.ConnectView(std::move(show));
}

void TieButton(Button& control, QPushButton& widget) {
  QObject::connect(&widget, &QPushButton::clicked, &widget,
                   [&control] { AtBorder([&] { control.Click(); }); });
  Follow(control, {Change::Enabled, Change::Visible, Change::Text}, [&control, &widget](Change change) {
    ShowCommon(control, widget, change);
    if (change == Change::Text) widget.setText(OnScreen(control.Text()));
    if (change == Change::Default) widget.setDefault(true);
  });
}

void TieCheckBox(CheckBox& control, QCheckBox& widget) {
  QObject::connect(&widget, &QCheckBox::clicked, &widget, [&control, &widget] {
    AtBorder([&] { control.Click(); });
    widget.setChecked(
        control.Checked());  // the widget has turned its mark over already, whatever the control did
  });
  Follow(control, {Change::Enabled, Change::Visible, Change::Text, Change::Checked},
         [&control, &widget](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::Text) widget.setText(OnScreen(control.Text()));
           if (change == Change::Checked) widget.setChecked(control.Checked());
         });
}

void TieLabel(Label& control, QLabel& widget) {
  widget.setTextFormat(Qt::PlainText);
  // A form says so of a label above other widgets that mostly has nothing to say.
  const bool hiddenWhenEmpty = widget.property("hiddenWhenEmpty").toBool();
  Follow(control, {Change::Enabled, Change::Visible, Change::Text},
         [&control, &widget, hiddenWhenEmpty](Change change) {
           ShowCommon(control, widget, change);
           if (change == Change::Text) widget.setText(OnScreen(control.Text()));
           if (hiddenWhenEmpty) widget.setVisible(control.Visible() && !control.Text().empty());
         });
}

void TieTimer(Timer& control, QWidget& form) {
  auto* ticks = new QTimer(&form);
  ticks->setTimerType(Qt::PreciseTimer);
  ticks->setInterval(control.IntervalMilliseconds());
  QObject::connect(ticks, &QTimer::timeout, ticks, [&control] { AtBorder([&] { control.Tick(); }); });
  Follow(control, {Change::Enabled}, [&control, ticks](Change change) {
    if (change != Change::Enabled) return;
    if (control.Enabled()) {
      ticks->start();
    } else {
      ticks->stop();
    }
  });
}

}  // namespace ox
