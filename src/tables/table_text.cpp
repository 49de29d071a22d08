// Line ends of table files, and finding a line again by its number.
#include "tables/table_text.h"

#include <cstddef>

#include "platform/line_ends.h"

namespace ox {
namespace {

constexpr BytesView kEnd = "/*/";
static_assert(kEnd[1] == TableText::kEndMark);

/// Stands for a character without a byte. No line of a table text ends with LF, so it is free for this.
constexpr char kNoByte = kLf;

/// The lines of a file with one CR behind each, and the end mark. In UTF-8 CR and LF are the same bytes.
Bytes EndLinesWithCr(BytesView file) {
  Bytes text;
  text.reserve(file.size() + 1 + kEnd.size());
  while (!file.empty()) {
    const std::size_t length = file.find_first_of(kCrLf);
    text.append(file.substr(0, length)).push_back(kCr);
    if (length == BytesView::npos) break;
    file.remove_prefix(length);
    file.remove_prefix(file.starts_with(kCrLf) ? kCrLf.size() : 1);
  }
  return text.append(kEnd);
}

}  // namespace

TableText::TableText(BytesView file) : text_(EndLinesWithCr(file), kNoByte) {}

std::string TableText::Written(BytesView part) const {
  return text_.Written(static_cast<std::size_t>(part.data() - Characters().data()), part.size());
}

std::string TableText::GetLineText(int line) const {
  BytesView lines = Characters();
  lines.remove_suffix(kEnd.size());
  for (; line > 1; --line) {
    const std::size_t end = lines.find(kCr);
    if (end == BytesView::npos) return {};
    lines.remove_prefix(end + 1);
  }
  return Written(lines.substr(0, lines.find(kCr)));
}

}  // namespace ox
