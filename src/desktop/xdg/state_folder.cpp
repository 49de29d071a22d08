// The user's folder for state.
#include "desktop/state_folder.h"

#include <QDir>

namespace ox {

QString StateFolder() {
  QString state = qEnvironmentVariable("XDG_STATE_HOME");
  if (!QDir::isAbsolutePath(state)) state = QDir::homePath() + QStringLiteral("/.local/state");
  return state + QStringLiteral("/oxservice");
}

}  // namespace ox
