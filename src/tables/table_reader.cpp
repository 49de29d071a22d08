// The reports that all table files share, and the checks behind them.
#include "tables/table_reader.h"

#include "tables/line_error.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

Bytes Slashed(char mark) {
  return {'/', mark, '/'};
}

}  // namespace

TableReader::TableReader(BytesView table_text, TableMessages& messages)
    : cursor_(table_text), messages_(messages) {}

bool TableReader::ReadMark(char expected) {
  mark_ = cursor_.FindControlMark();
  return mark_ == expected || Fail(", Steuerzeichen " + Slashed(expected) + " erwartet!");
}

bool TableReader::ReadMark(char expected, char or_else) {
  mark_ = cursor_.FindControlMark();
  return mark_ == expected || mark_ == or_else ||
         Fail(", Steuerzeichen " + Slashed(expected) + " oder " + Slashed(or_else) + " erwartet!");
}

BytesView TableReader::ReadValue(BytesView name) {
  const BytesView value = cursor_.ReadFramedValue();
  if (value.empty()) {
    Fail(Bytes(", ").append(name) + " muss (direkt) auf " + Slashed(mark_) +
         " folgen und mit \" eingerahmt sein!");
  }
  return value;
}

Bytes TableReader::ReadText(BytesView name, std::size_t max_length, BytesView too_long) {
  const BytesView value = ReadValue(name);
  if (value.size() > max_length) {
    Fail(too_long);
    return {};
  }
  return Translate(value);
}

Bytes TableReader::Translate(BytesView value) {
  return CheckTableText(cursor_.table_text(), value, cursor_.line(), messages_);
}

bool TableReader::Fail(BytesView specific) {
  ReportLineError(cursor_.line(), specific, cursor_.table_text(), messages_);
  return false;
}

}  // namespace ox
