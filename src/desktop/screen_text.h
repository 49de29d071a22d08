// How the program's texts stand on the screen.
#pragma once

#include <QString>
#include <string_view>

namespace ox {

/// A UTF-8 text for labels, traces and message boxes: CR LF and LF break the line, every other control
/// character but the tabulator is shown by its symbol ("␍"), so that nothing which came over the line stays
/// unseen.
QString OnScreen(std::string_view text);

/// The same for a message box, where a lone CR breaks the line too: reports quote lines behind one.
QString OnMessageBox(std::string_view text);

/// A text of at most `limit` characters, "…" at its end where it was cut off; runs without a blank may be
/// broken, so that no box grows wider than the screen.
QString CutToFit(QString text, qsizetype limit);

}  // namespace ox
