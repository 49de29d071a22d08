// The end of the desktop session.
#pragma once

#include <QObject>
#include <QSessionManager>
#include <functional>

namespace ox {

/// Hears from the toolkit that the session is to end. Needs a QApplication, and lives shorter than it.
class SessionEnd : public QObject {
 public:
  /// `busy` says whether the session has to wait: its end is refused then. `end` brings the program to its
  /// end; it is called in either case, perhaps more than once.
  SessionEnd(std::function<bool()> busy, std::function<void()> end);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Answer(QSessionManager& session);

  std::function<bool()> busy_;
  std::function<void()> end_;
};

}  // namespace ox
