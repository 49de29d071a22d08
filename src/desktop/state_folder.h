// Where the program keeps what a user need not see.
#pragma once

#include <QString>

namespace ox {

/// "oxservice" in $XDG_STATE_HOME, else in ~/.local/state; on Windows in the user's folder AppData\Local. It
/// may not exist yet.
QString StateFolder();

}  // namespace ox
