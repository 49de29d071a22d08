// Sizes and positions in an INI file, and the bounds that the screen sets them.
#include "desktop/window_places.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <algorithm>
#include <cstdlib>
#include <optional>

#include "desktop/state_folder.h"

namespace ox {
namespace {

// Keys of a window's section.
constexpr const char* kSize = "size";
constexpr const char* kPosition = "position";
constexpr const char* kMaximized = "maximized";

/// Under Wayland a program neither knows nor chooses where its windows stand.
bool PlacesWindows() {
  return !QGuiApplication::platformName().startsWith(QStringLiteral("wayland"));
}

QSize FrameOf(const QWidget& form) {
  const QWidget* parent = form.parentWidget();
  const bool known =
      parent != nullptr && parent->isVisible() && parent->frameGeometry() != parent->geometry();
  return known ? parent->frameGeometry().size() - parent->size() : kUsualFrame;
}

const QScreen& ScreenOf(const QWidget& form) {
  const QWidget* parent = form.parentWidget();
  return *(parent != nullptr ? parent->screen() : form.screen());
}

/// Moves a frame into an area that is no smaller.
QPoint Within(const QRect& area, const QRect& frame) {
  const auto bounded = [](int wish, int least, int most) { return std::max(std::min(wish, most), least); };
  return {bounded(frame.x(), area.left(), area.right() + 1 - frame.width()),
          bounded(frame.y(), area.top(), area.bottom() + 1 - frame.height())};
}

/// How the user left a form.
struct Place {
  QSize size;  // not valid when it is not known
  std::optional<QPoint> position;
  bool maximized = false;
};

/// Many times what all windows need. A file that has grown larger is not ours any more, and would be read
/// whole with every window.
constexpr qint64 kMostBytes = 100000;

/// Whether there is a file that can be read in no time, or none yet.
bool IsSound(const QString& file) {
  const QFileInfo info(file);
  return !info.exists() || (info.isFile() && info.size() <= kMostBytes);
}

/// Farther away than any screen.
constexpr int kFarAway = 100000;  // pixels

bool IsNear(const QPoint& position) {
  return std::abs(position.x()) < kFarAway && std::abs(position.y()) < kFarAway;
}

/// Reads the form's place, and sets its splitters as they stood.
Place ReadPlace(const QString& file, QWidget& form) {
  QSettings places(file, QSettings::IniFormat);
  places.beginGroup(form.objectName());
  for (QSplitter* splitter : form.findChildren<QSplitter*>()) {
    splitter->restoreState(places.value(splitter->objectName()).toByteArray());
  }
  Place place{places.value(kSize).toSize(), {}, places.value(kMaximized).toBool()};
  const QPoint position = places.value(kPosition).toPoint();
  if (PlacesWindows() && places.contains(kPosition) && IsNear(position)) place.position = position;
  return place;
}

}  // namespace

void WindowPlaces::Restore(QWidget& form) const {
  const Place left = file_.isEmpty() || !IsSound(file_) ? Place{} : ReadPlace(file_, form);
  const QSize size = left.size.isValid() ? left.size : form.size();
  const QScreen* screen =
      left.position ? QGuiApplication::screenAt(QRect(*left.position, size).center()) : nullptr;
  const QSize frame = FrameOf(form);
  const QRect area = (screen != nullptr ? *screen : ScreenOf(form)).availableGeometry();
  form.resize(size.boundedTo(area.size() - frame));
  if (screen != nullptr) form.move(Within(area, QRect(*left.position, form.size() + frame)));
  if (left.maximized) form.setWindowState(Qt::WindowMaximized);
}

void WindowPlaces::Keep(const QWidget& form) const {
  if (file_.isEmpty()) return;
  if (!IsSound(file_) && (!QFileInfo(file_).isFile() || !QFile::remove(file_))) return;
  QSettings places(file_, QSettings::IniFormat);
  places.beginGroup(form.objectName());
  places.setValue(kMaximized, form.isMaximized());
  if (!form.isMaximized()) {
    places.setValue(kSize, form.size());
    if (PlacesWindows()) places.setValue(kPosition, form.pos());
  }
  for (const QSplitter* splitter : form.findChildren<QSplitter*>()) {
    places.setValue(splitter->objectName(), splitter->saveState());
  }
}

QString WindowPlaces::UsersFile() {
  return StateFolder() + QStringLiteral("/windows.ini");
}

}  // namespace ox
