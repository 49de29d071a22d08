// What becomes of a fault where nobody says otherwise.
#include "tables/table_messages.h"

#include "tables/line_error.h"

namespace ox {

void TableMessages::ShowFault(int line, std::string_view specific, const TableText& text) {
  ReportLineError(line, specific, text, *this);
}

}  // namespace ox
