// The end of the desktop session: first the programs are asked, then they are told.
#include "desktop/session_end.h"

#include <QEvent>
#include <QGuiApplication>
#include <utility>

#include "desktop/border.h"

namespace ox {

SessionEnd::SessionEnd(std::function<bool()> busy, std::function<void()> end)
    : busy_(std::move(busy)), end_(std::move(end)) {
  // Directly: the answer is given when this returns.
  connect(
      qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) { Answer(session); },
      Qt::DirectConnection);
  // All that Windows' end of a session brings behind the question: the process is gone when this returns.
  connect(
      qApp, &QCoreApplication::aboutToQuit, this, [this] { AtBorder([this] { end_(); }); },
      Qt::DirectConnection);
  qApp->installEventFilter(this);
}

void SessionEnd::Answer(QSessionManager& session) {
  if (!busy_()) return;  // another program may still refuse; the program ends when it is told to
  session.cancel();
  AtBorder([this] { end_(); });
}

bool SessionEnd::eventFilter(QObject* watched, QEvent* event) {
  if (watched != qApp || event->type() != QEvent::Quit) return false;
  AtBorder([this] { end_(); });
  return true;  // the toolkit would close the windows in an order of its own
}

}  // namespace ox
