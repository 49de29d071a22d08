// The one form in which an error in a table file is reported.
#pragma once

#include "platform/bytes.h"
#include "tables/table_messages.h"

namespace ox {

/// Shows "Fehler in Zeile", the line number, `specific` (it begins with ", "), an empty line and the text of
/// the line. Lines count from 1; one past the last line is quoted as empty.
void ReportLineError(int line, BytesView specific, BytesView table_text, TableMessages& messages);

}  // namespace ox
