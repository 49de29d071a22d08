// Which widget shows which control: they are tied by kind and name.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/window.h"

namespace ox {

/// Ties a control to the widget of its kind that bears its name, both ways, and shows its present state.
/// False when the form has no such widget. The tie ends with the form; ConnectView({}) ends it from the
/// control's side.
bool TieControl(Control& control, QWidget& form);

/// What does not fit between a window and its form, one sentence each: controls without a widget, and named
/// widgets of these kinds without a control.
std::vector<std::string> MismatchesOf(const Window& window, QWidget& form);

}  // namespace ox
