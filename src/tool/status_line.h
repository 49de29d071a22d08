// What a command is doing, on a terminal.
#pragma once

#include <cstddef>
#include <string>

#include "tool/console.h"

namespace ox::tool {

/// One line among the messages that changes in its place. Shows nothing where they lead to no terminal.
class StatusLine {
 public:
  /// The console outlives it.
  explicit StatusLine(const Console& console) : console_(console) {}
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;
  ~StatusLine() { Clear(); }

  /// A text (UTF-8) of one line, shorter than a terminal is wide.
  void Show(const std::string& text);
  /// Takes the line away, so that a message can stand there.
  void Clear() { Show({}); }

 private:
  const Console& console_;
  std::string shown_;
};

}  // namespace ox::tool
