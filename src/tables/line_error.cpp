// Puts the report of an error in a table file together.
#include "tables/line_error.h"

#include <string>

#include "tables/table_text.h"

namespace ox {

void ReportLineError(int line, BytesView specific, BytesView table_text, TableMessages& messages) {
  Bytes text = "Fehler in Zeile " + std::to_string(line);
  text.append(specific).append(2, kLineEnd).append(GetLineText(table_text, line));
  messages.Show(text);
}

}  // namespace ox
