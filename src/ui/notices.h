// What the user should know beside the messages, and the quiet line that shows it at the foot of a window.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "ui/controls.h"

namespace ox {

class QuietLine;

/// The notices of the whole program, shown in every window that has a quiet line.
class Notices {
 public:
  /// Who has something to say; each has one notice at a time, and they are shown in this order.
  enum class From { kPort, kLog };

  Notices() = default;
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;

  /// Shows the notice (UTF-8) in place of the last one from there.
  void Say(From from, std::string text);
  void Withdraw(From from) { Say(from, {}); }

  /// All notices, one a line; empty when there is none.
  std::string Text() const;

 private:
  friend class QuietLine;

  static constexpr std::size_t kSources = 2;

  std::array<std::string, kSources> said_;
  std::vector<QuietLine*> lines_;
};

/// Shows the notices as long as it lives. The notices outlive it. In every form it is named "Hinweis".
class QuietLine : public Label {
 public:
  QuietLine(Window& window, Notices& notices);
  ~QuietLine() override;

 private:
  Notices& notices_;
};

}  // namespace ox
