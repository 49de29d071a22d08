// The user's folder for what stays on this PC.
#include "desktop/state_folder.h"

#include <QStandardPaths>

namespace ox {

QString StateFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/oxservice");
}

}  // namespace ox
