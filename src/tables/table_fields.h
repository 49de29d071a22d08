// The marks of a table file with their values and lines, for those who look at a table that is known to be
// sound.
#pragma once

#include <vector>

#include "platform/bytes.h"
#include "tables/table_text.h"

namespace ox {

struct TableField {
  char mark;
  BytesView value;  ///< as the file has it, a part of the table text; empty for a mark without one
  int line;         ///< from 1
};

/// All fields up to the end mark of a table that its parser takes. The text outlives them.
std::vector<TableField> ReadTableFields(const TableText& text);

}  // namespace ox
