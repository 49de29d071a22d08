// What parsers and linking report, shown in message boxes.
#pragma once

#include <string>

#include "tables/table_messages.h"
#include "ui/window_system.h"

namespace ox {

/// Shows the messages of parsers and linking as message boxes. The window system outlives it.
class WindowTableMessages : public TableMessages {
 public:
  explicit WindowTableMessages(WindowSystem& windows) : windows_(windows) {}

  void Show(const std::string& text) override;
  bool Confirm(const std::string& text) override;

 private:
  WindowSystem& windows_;
};

}  // namespace ox
