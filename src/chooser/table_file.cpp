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
/// A message quotes a line of the file. A file that is no table may be one endless line, which no message box
/// could show.
constexpr std::size_t kLongestMessage = 2000;  // characters

std::string ShownText(const Bytes& text) {
  if (text.size() <= kLongestMessage) return ToText(text);
  return ToText(BytesView(text).substr(0, kLongestMessage)) + " ...";
}

}  // namespace

std::optional<Bytes> ReadTableText(Files& files, const std::string& path) {
  std::optional<Bytes> content = files.Read(path, kMaxTableFile);
  if (!content) return std::nullopt;
  return BuildTableText(FileTextToBytes(*std::move(content)));
}

void WindowTableMessages::Show(const Bytes& text) {
  windows_.ShowMessage(ShownText(text));
}

bool WindowTableMessages::Confirm(const Bytes& text) {
  return windows_.ShowMessage(ShownText(text), Buttons::OkCancel) == Answer::Ok;
}

}  // namespace ox
