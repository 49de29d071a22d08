// The manual, opened at the chapter of a window.
#pragma once

#include <QWidget>
#include <string_view>

namespace ox {

/// The place of the manual that tells of the windows with this form, without its "#"; empty when there is
/// none.
std::string_view ChapterOf(std::string_view form);

/// Has the desktop open the manual there, and returns at once: what runs in the window goes on. Where there
/// is no manual, or nothing that opens it, a message over the window says so.
void OpenManual(QWidget& window, std::string_view form);

}  // namespace ox
