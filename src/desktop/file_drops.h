// Files dropped on a form.
#pragma once

#include <QMimeData>
#include <QObject>
#include <QWidget>
#include <string>
#include <vector>

#include "ui/window.h"

namespace ox {

/// Hands every file that the user drops on a window's form to the control that takes it. The form owns it.
class FileDrops : public QObject {
 public:
  /// The window outlives the form.
  FileDrops(const Window& window, QWidget& form);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// The control that takes the file now; null when none does.
  Control* TakerOf(const std::string& path) const;
  /// Paths of those files that a control takes.
  std::vector<std::string> TakenOf(const QMimeData& data) const;
  void Drop(const std::vector<std::string>& paths);

  const Window& window_;
  QWidget& form_;
};

}  // namespace ox
