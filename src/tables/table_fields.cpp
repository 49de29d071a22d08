// Steps from mark to mark.
#include "tables/table_fields.h"

#include "tables/table_cursor.h"

namespace ox {

std::vector<TableField> ReadTableFields(const TableText& text) {
  std::vector<TableField> fields;
  TableCursor cursor(text.Characters());
  for (;;) {
    const char mark = cursor.FindControlMark();
    if (mark == 'E' || mark == TableText::kEndMark) return fields;
    const bool hasValue = mark != 'B';
    const int line = cursor.Line();
    fields.push_back({mark, hasValue ? cursor.ReadFramedValue() : BytesView(), line});
  }
}

}  // namespace ox
