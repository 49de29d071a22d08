// From a table file of the host to the text that the parsers read.
#pragma once

#include <optional>
#include <string>

#include "platform/files.h"
#include "tables/table_text.h"

namespace ox {

/// The table text of a file; nothing when the file cannot be read, which the caller tells the user. `path` is
/// UTF-8.
std::optional<TableText> ReadTableText(Files& files, const std::string& path);

}  // namespace ox
