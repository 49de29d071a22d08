// From a file to a table text, and from a report to a message box.
#include "chooser/table_file.h"

#include <cstddef>

namespace ox {
namespace {

/// Larger than any table. A larger file is read up to here only, and its parser reports that the end is
/// missing.
constexpr std::size_t kMaxTableFile = std::size_t{64} * 1024 * 1024;  // bytes

}  // namespace

std::optional<TableText> ReadTableText(Files& files, const std::string& path) {
  const std::optional<Bytes> content = files.Read(path, kMaxTableFile);
  if (!content) return std::nullopt;
  return TableText(*content);
}

void WindowTableMessages::Show(const std::string& text) {
  windows_.ShowMessage(text);
}

bool WindowTableMessages::Confirm(const std::string& text) {
  return windows_.ShowMessage(text, Buttons::OkCancel) == Answer::Ok;
}

}  // namespace ox
