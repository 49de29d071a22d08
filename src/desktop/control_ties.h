// How each kind of control is tied to its kind of widget.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <initializer_list>

#include "desktop/border.h"
#include "desktop/curve_view.h"
#include "desktop/steady_bar.h"
#include "ui/controls.h"
#include "ui/curve.h"

namespace ox {

// Each shows the control's present state, follows its changes, and hands on what the user does.

void TieButton(Button& control, QPushButton& widget);
void TieCheckBox(CheckBox& control, QCheckBox& widget);
void TieLabel(Label& control, QLabel& widget);
void TieProgressBar(ProgressBar& control, SteadyBar& widget);
/// One line to type in.
void TieField(TextBox& control, QLineEdit& widget);
/// Many lines to read: a trace or a display.
void TieTrace(TextBox& control, QPlainTextEdit& widget);
void TieCurve(Curve& control, CurveView& widget);
void TieList(ListBox& control, QListWidget& widget);
void TieDropDown(ListBox& control, QComboBox& widget);
void TieMenuCommand(MenuEntry& control, QAction& widget);
void TieMenu(MenuEntry& control, QMenu& widget);
/// The ticks come from the form's thread and end with the form.
void TieTimer(Timer& control, QWidget& form);

/// Whether a user could operate the widget: it can be used, and no box is open over its window.
bool WithinReach(const QWidget& widget);

/// Runs what the user did at the widget, and returns whether it was within his reach. Assistive technology
/// acts on widgets behind a message box as well: then nothing is run.
template <class Action>
bool ByHand(const QWidget& widget, Action action) {
  if (!WithinReach(widget)) return false;
  AtBorder(action);
  return true;
}

/// Shows what every widget shows alike: enabled, visible, focus.
void ShowCommon(const Control& control, QWidget& widget, Change change);

/// Shows each of the `first` changes once and all later ones as they come.
void Follow(Control& control, std::initializer_list<Change> first, Control::View show);

}  // namespace ox
