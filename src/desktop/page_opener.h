// How this system's desktop shows a page, and where it has the manual.
#pragma once

#include <QString>
#include <functional>

namespace ox {

/// Where the manual of the installed program lies, as a path from the program's folder.
QString PlaceOfManual();

/// Has the desktop open an HTML file (full path), and returns at once. Where nothing opens it, `failed` is
/// called from the event loop.
void OpenPage(const QString& page, std::function<void()> failed);

}  // namespace ox
