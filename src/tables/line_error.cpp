// Puts the report of an error in a table file together.
#include "tables/line_error.h"

#include <string>

#include "platform/line_ends.h"

namespace ox {

void ReportLineError(int line, std::string_view specific, const TableText& tableText,
                     TableMessages& messages) {
  std::string text = "Fehler in Zeile " + std::to_string(line);
  text.append(specific).append(2, kCr).append(tableText.GetLineText(line));
  messages.Show(text);
}

}  // namespace ox
