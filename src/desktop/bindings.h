// Which widget shows which control: they are tied by kind and name.
#pragma once

#include <QWidget>

#include "ui/controls.h"

namespace ox {

/// Ties a control to the widget of its kind that bears its name, both ways, and shows its present state.
/// False when the form has no such widget. The tie ends with the form; ConnectView({}) ends it from the
/// control's side.
bool TieControl(Control& control, QWidget& form);

}  // namespace ox
