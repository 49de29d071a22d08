// Message boxes.
#pragma once

#include <QWidget>
#include <string_view>

#include "ui/window_system.h"

namespace ox {

/// Shows the text (UTF-8) over the parent, or alone when that is null, and returns the user's answer.
Answer ShowMessageBox(QWidget* parent, std::string_view text, Buttons buttons);

}  // namespace ox
