// The kinds of controls and widgets that belong together.
#include "desktop/bindings.h"

#include <algorithm>
#include <array>

#include "desktop/control_ties.h"

namespace ox {
namespace {

/// A kind of control and a kind of widget that can show it.
struct Pairing {
  bool (*fits)(const Control& control);
  QObject* (*find)(QWidget& form, const QString& name);
  QList<QObject*> (*findAll)(QWidget& form);
  void (*tie)(Control& control, QObject& widget);
};

template <class ControlKind, class Widget, void (*tie)(ControlKind&, Widget&)>
constexpr Pairing Pair() {
  return {
      [](const Control& control) { return dynamic_cast<const ControlKind*>(&control) != nullptr; },
      [](QWidget& form, const QString& name) -> QObject* { return form.findChild<Widget*>(name); },
      [](QWidget& form) {
        QList<QObject*> all;
        for (Widget* widget : form.findChildren<Widget*>()) all += widget;
        return all;
      },
      [](Control& control, QObject& widget) {
        tie(dynamic_cast<ControlKind&>(control), static_cast<Widget&>(widget));
      },
  };
}

constexpr std::array kPairings = {
    Pair<Button, QPushButton, TieButton>(),
    Pair<CheckBox, QCheckBox, TieCheckBox>(),
    Pair<Label, QLabel, TieLabel>(),
    Pair<TextBox, QLineEdit, TieField>(),
    Pair<TextBox, QPlainTextEdit, TieTrace>(),
    Pair<ListBox, QListWidget, TieList>(),
    Pair<ListBox, QComboBox, TieDropDown>(),
    Pair<MenuEntry, QMenu, TieMenu>(),
    Pair<MenuEntry, QAction, TieMenuCommand>(),
};

struct Found {
  const Pairing* pairing = nullptr;
  QObject* widget = nullptr;
};

/// The widget that shows a control; null when the form has none.
Found WidgetOf(const Control& control, QWidget& form) {
  const QString name = QString::fromStdString(control.Name());
  for (const Pairing& pairing : kPairings) {
    if (!pairing.fits(control)) continue;
    if (QObject* widget = pairing.find(form, name)) return {&pairing, widget};
  }
  return {};
}

/// Parts that the toolkit puts into its own widgets.
bool IsInternal(const QString& name) {
  return name.isEmpty() || name.startsWith(QStringLiteral("qt_"));
}

}  // namespace

bool TieControl(Control& control, QWidget& form) {
  if (auto* timer = dynamic_cast<Timer*>(&control)) {
    TieTimer(*timer, form);
    return true;
  }
  const Found found = WidgetOf(control, form);
  if (found.widget != nullptr) found.pairing->tie(control, *found.widget);
  return found.widget != nullptr;
}

std::vector<std::string> MismatchesOf(const Window& window, QWidget& form) {
  std::vector<std::string> mismatches;
  std::vector<const QObject*> tied;
  for (const Control* control : window.Controls()) {
    if (dynamic_cast<const Timer*>(control) != nullptr) continue;
    const Found found = WidgetOf(*control, form);
    if (found.widget != nullptr) {
      tied.push_back(found.widget);
    } else {
      mismatches.push_back(window.Name() + ": no widget for the control " + control->Name());
    }
  }
  for (const Pairing& pairing : kPairings) {
    for (const QObject* widget : pairing.findAll(form)) {
      if (IsInternal(widget->objectName()) || std::ranges::count(tied, widget) == 1) continue;
      mismatches.push_back(window.Name() + ": no control for the widget " +
                           widget->objectName().toStdString());
    }
  }
  return mismatches;
}

}  // namespace ox
