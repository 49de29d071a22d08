// The question where to save.
#pragma once

#include <QString>
#include <QWidget>
#include <string_view>
#include <vector>

#include "ui/window_system.h"

namespace ox {

/// Asks with the toolkit's own dialogue, whatever the desktop. It begins in the working folder, later in the
/// folder that was chosen last.
class SaveQuestion {
 public:
  /// Opens the dialogue over the form, which owns it, and returns at once.
  void Ask(QWidget& form, std::string_view name, const std::vector<FileKind>& kinds, SaveAnswer answer);

 private:
  QString folder_ = QStringLiteral(".");
};

}  // namespace ox
