// From a file's bytes to a table text, and from a parser's bytes to a message box.
#include "chooser/table_file.h"

#include <cstddef>
#include <utility>

#include "platform/text.h"
#include "tables/table_text.h"

namespace ox {
namespace {

/// Far beyond any table. A larger file is read up to here, and its parser misses what is not there.
constexpr std::size_t kMaxTableFile = std::size_t{64} * 1024 * 1024;  // bytes

}  // namespace

std::optional<Bytes> ReadTableText(Files& files, const std::string& path) {
  std::optional<Bytes> content = files.Read(path, kMaxTableFile);
  if (!content) return std::nullopt;
  return BuildTableText(FileTextToBytes(*std::move(content)));
}

void WindowTableMessages::Show(const Bytes& text) {
  windows_.ShowMessage(ToText(text));
}

bool WindowTableMessages::Confirm(const Bytes& text) {
  return windows_.ShowMessage(ToText(text), Buttons::OkCancel) == Answer::Ok;
}

}  // namespace ox
