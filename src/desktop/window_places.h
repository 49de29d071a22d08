// Where the user left each window, from one session to the next.
#pragma once

#include <QSize>
#include <QString>
#include <QWidget>
#include <utility>

namespace ox {

/// What a frame adds to a window, where none is on the screen to tell.
inline constexpr QSize kUsualFrame(12, 40);  // pixels

/// Keeps the size of every window, how its splitter stood and, where the window system lets a program place
/// its windows, its position. A file that cannot be read or written is no failure: the windows stand as
/// designed.
class WindowPlaces {
 public:
  /// Without a file nothing is kept; the windows still fit their screen.
  explicit WindowPlaces(QString file = {}) : file_(std::move(file)) {}

  /// Gives a form that is not yet shown the size and place in which the user left it, else its design; it is
  /// never larger than its screen and never beyond it.
  void Restore(QWidget& form) const;
  /// Keeps the size and place of a form that is about to go.
  void Keep(const QWidget& form) const;

  /// The user's file for it.
  static QString UsersFile();

 private:
  QString file_;
};

}  // namespace ox
