// The kinds of controls and widgets that belong together.
#include "desktop/bindings.h"

#include <array>

#include "desktop/control_ties.h"

namespace ox {
namespace {

/// A kind of control and a kind of widget that can show it.
struct Pairing {
  bool (*fits)(const Control& control);
  QObject* (*find)(QWidget& form, const QString& name);
  void (*tie)(Control& control, QObject& widget);
};

template <class ControlKind, class Widget, void (*tie)(ControlKind&, Widget&)>
constexpr Pairing Pair() {
  return {
      [](const Control& control) { return dynamic_cast<const ControlKind*>(&control) != nullptr; },
      [](QWidget& form, const QString& name) -> QObject* { return form.findChild<Widget*>(name); },
      [](Control& control, QObject& widget) {
        tie(dynamic_cast<ControlKind&>(control), static_cast<Widget&>(widget));
      },
  };
}

constexpr std::array kPairings = {
    Pair<Button, QPushButton, TieButton>(), Pair<CheckBox, QCheckBox, TieCheckBox>(),
    Pair<Label, QLabel, TieLabel>(),        Pair<ProgressBar, SteadyBar, TieProgressBar>(),
    Pair<TextBox, QLineEdit, TieField>(),   Pair<TextBox, QPlainTextEdit, TieTrace>(),
    Pair<ListBox, QListWidget, TieList>(),  Pair<ListBox, QComboBox, TieDropDown>(),
    Pair<MenuEntry, QMenu, TieMenu>(),      Pair<MenuEntry, QAction, TieMenuCommand>(),
    Pair<Curve, CurveView, TieCurve>(),
};

}  // namespace

bool TieControl(Control& control, QWidget& form) {
  if (auto* timer = dynamic_cast<Timer*>(&control)) {
    TieTimer(*timer, form);
    return true;
  }
  const QString name = QString::fromStdString(control.Name());
  for (const Pairing& pairing : kPairings) {
    if (!pairing.fits(control)) continue;
    if (QObject* widget = pairing.find(form, name)) {
      pairing.tie(control, *widget);
      return true;
    }
  }
  return false;
}

}  // namespace ox
