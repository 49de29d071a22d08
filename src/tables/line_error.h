// The one form in which an error in a table file is reported.
#pragma once

#include <string_view>

#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// Shows "Fehler in Zeile", the line number, `specific` (it begins with ", "), an empty line and the text of
/// the line. Lines count from 1; one past the last line is quoted as empty.
void ReportLineError(int line, std::string_view specific, const TableText& tableText,
                     TableMessages& messages);

}  // namespace ox
