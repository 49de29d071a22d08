// Where the program keeps what a user need not see.
#pragma once

#include <QString>

namespace ox {

/// "oxservice" in $XDG_STATE_HOME, else in ~/.local/state; it may not exist yet.
QString StateFolder();

}  // namespace ox
