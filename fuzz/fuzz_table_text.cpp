// Any bytes as a table file, on the lexical level: lines, marks and values stay within the text and its
// lines.
#include "table_samples.h"
#include "tables/table_cursor.h"
#include "tables/table_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace ox;
  const Bytes text = BuildTableText(View(data, size));
  Require(text.find('\n') == Bytes::npos);
  Require(text.empty() == (size == 0) && (text.empty() || text.back() == kLineEnd));

  Bytes joined;
  int lines = 0;
  while (joined.size() < text.size()) joined.append(GetLineText(text, ++lines)).push_back(kLineEnd);
  Require(joined == text && GetLineText(text, lines + 1).empty());

  TableCursor cursor(text);
  for (std::size_t marks = 0; marks <= text.size() + 2; ++marks) {
    const int before = cursor.line();
    cursor.FindControlMark();
    Require(cursor.line() >= before && cursor.line() <= lines + 1);
    const int at_mark = cursor.line();
    const BytesView value = cursor.ReadFramedValue();
    Require(cursor.line() == at_mark && value.find_first_of("\"\r") == BytesView::npos);
  }
  return 0;
}
