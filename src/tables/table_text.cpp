// Line ends of table files, and finding a line again by its number.
#include "tables/table_text.h"

namespace ox {

Bytes BuildTableText(BytesView file) {
  Bytes text;
  text.reserve(file.size() + 1);
  while (!file.empty()) {
    const std::size_t length = file.find_first_of("\r\n");
    text.append(file.substr(0, length)).push_back(kLineEnd);
    if (length == BytesView::npos) break;
    file.remove_prefix(length);
    file.remove_prefix(file.substr(0, 2) == "\r\n" ? 2 : 1);
  }
  return text;
}

BytesView GetLineText(BytesView table_text, int line) {
  for (; line > 1; --line) {
    const std::size_t end = table_text.find(kLineEnd);
    if (end == BytesView::npos) return {};
    table_text.remove_prefix(end + 1);
  }
  return table_text.substr(0, table_text.find(kLineEnd));
}

}  // namespace ox
