// The reports that all table files share, and the checks behind them.
#include "tables/table_reader.h"

#include <string>

#include "tables/line_error.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

std::string Slashed(char mark) {
  return {'/', mark, '/'};
}

}  // namespace

TableReader::TableReader(const TableText& tableText, TableMessages& messages)
    : text_(tableText), cursor_(tableText.Characters()), messages_(messages) {}

bool TableReader::ReadMark(char expected) {
  mark_ = cursor_.FindControlMark();
  return mark_ == expected || Fail(", Steuerzeichen " + Slashed(expected) + " erwartet!");
}

bool TableReader::ReadMark(char expected, char orElse) {
  mark_ = cursor_.FindControlMark();
  return mark_ == expected || mark_ == orElse ||
         Fail(", Steuerzeichen " + Slashed(expected) + " oder " + Slashed(orElse) + " erwartet!");
}

BytesView TableReader::ReadValue(std::string_view name) {
  const BytesView value = cursor_.ReadFramedValue();
  if (value.empty()) {
    Fail(std::string(", ").append(name) + " muss (direkt) auf " + Slashed(mark_) +
         " folgen und mit \" eingerahmt sein!");
  }
  return value;
}

Bytes TableReader::ReadText(std::string_view name, std::size_t maxLength, std::string_view tooLong) {
  const BytesView value = ReadValue(name);
  if (value.size() > maxLength) {
    Fail(tooLong);
    return {};
  }
  return Translate(value);
}

Bytes TableReader::Translate(BytesView value) {
  return CheckTableText(text_, value, cursor_.Line(), messages_);
}

bool TableReader::Fail(std::string_view specific) {
  ReportLineError(cursor_.Line(), specific, text_, messages_);
  return false;
}

}  // namespace ox
