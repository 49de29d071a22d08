// From the toolkit's drag and drop to the controls.
#include "desktop/file_drops.h"

#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QUrl>
#include <algorithm>

#include "desktop/control_ties.h"

namespace ox {

FileDrops::FileDrops(const Window& window, QWidget& form) : QObject(&form), window_(window), form_(form) {
  form.setAcceptDrops(true);
  form.installEventFilter(this);
  // A field would take the name of a file for a text.
  for (QLineEdit* field : form.findChildren<QLineEdit*>()) field->installEventFilter(this);
}

bool FileDrops::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
    return QObject::eventFilter(watched, event);
  }
  auto* drop = static_cast<QDropEvent*>(event);
  const std::vector<std::string> paths = TakenOf(*drop->mimeData());
  if (paths.empty()) return false;
  drop->setDropAction(Qt::CopyAction);
  drop->accept();
  // With the next events: the program that the files come from waits for the end of this one.
  if (type == QEvent::Drop) {
    QMetaObject::invokeMethod(
        this, [this, paths] { Drop(paths); }, Qt::QueuedConnection);
  }
  return true;
}

Control* FileDrops::TakerOf(const std::string& path) const {
  const auto& controls = window_.Controls();
  const auto taker = std::ranges::find_if(controls, [&](const Control* one) { return one->Takes(path); });
  return taker == controls.end() ? nullptr : *taker;
}

std::vector<std::string> FileDrops::TakenOf(const QMimeData& data) const {
  std::vector<std::string> paths;
  for (const QUrl& url : data.urls()) {
    const QString file = url.toLocalFile();                           // empty for what is not on this machine
    std::string path = QDir::toNativeSeparators(file).toStdString();  // as the host writes its paths
    // A folder is nothing that could be loaded, however it is named.
    if (TakerOf(path) != nullptr && !QFileInfo(file).isDir()) paths.push_back(std::move(path));
  }
  return paths;
}

void FileDrops::Drop(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    // What is said of one file may stand before the window, or have changed what it takes.
    if (Control* taker = TakerOf(path)) ByHand(form_, [&] { taker->Drop(path); });
  }
}

}  // namespace ox
