// The context menu of what is shown: copy, select, save.
#pragma once

#include <QPlainTextEdit>
#include <QWidget>
#include <functional>

#include "ui/controls.h"

namespace ox {

/// Gives a display its menu: by the right button of the mouse, by the menu key and by Shift+F10.
void GiveDisplayMenu(Control& control, QPlainTextEdit& widget);

/// The same for a picture, which can only be saved. `draw` makes the content of its file.
void GivePictureMenu(Control& control, QWidget& widget, std::function<QByteArray()> draw);

}  // namespace ox
