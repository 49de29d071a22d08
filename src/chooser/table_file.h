// Table files between host and tables: reading one, and showing what its parser reports.
#pragma once

#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/window_system.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// The table text of a file; nothing when the file cannot be read, which the caller tells the user. `path` is
/// UTF-8.
std::optional<TableText> ReadTableText(Files& files, const std::string& path);

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
