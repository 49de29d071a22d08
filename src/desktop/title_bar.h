// What stands in the title bar of a window.
#pragma once

#include <QString>
#include <QWidget>

namespace ox {

/// The frame of a dialogue has no minimise box: the program behind a minimised dialogue could not be used.
inline constexpr Qt::WindowFlags kDialogFrame = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                                Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

/// Gives the form its title and, when it is a dialogue, the boxes of one; the form is made no narrower than
/// its title.
void SetTitleBar(QWidget& form, const QString& title);

}  // namespace ox
