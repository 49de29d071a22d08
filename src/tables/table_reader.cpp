// The reports that all table files share, and the checks behind them.
#include "tables/table_reader.h"

#include <string>

#include "platform/line_ends.h"
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
  NextMark();
  return mark_ == expected || FailAtMark(", Steuerzeichen " + Slashed(expected) + " erwartet!");
}

bool TableReader::ReadMark(char expected, char orElse) {
  NextMark();
  return mark_ == expected || mark_ == orElse ||
         FailAtMark(", Steuerzeichen " + Slashed(expected) + " oder " + Slashed(orElse) + " erwartet!");
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
  messages_.ShowFault(cursor_.Line(), specific, text_);
  return false;
}

bool TableReader::FailAtMark(std::string_view specific) {
  unexpected_ = true;
  return Fail(specific);
}

void TableReader::NextMark() {
  if (!ahead_) mark_ = cursor_.FindControlMark();
  ahead_ = false;
  unexpected_ = false;
}

bool TableReader::GoOn(std::string_view starts) {
  faulty_ = true;
  if (!messages_.WantsFurtherFaults() || cursor_.AtEnd()) return false;
  const auto begins = [&] { return starts.find(mark_) != std::string_view::npos; };
  ahead_ = unexpected_ && begins();
  while (!ahead_) {
    const int line = cursor_.Line();
    if (mark_ == kCr) cursor_.CountLine();
    mark_ = cursor_.FindControlMark();
    ahead_ = cursor_.AtEnd() || (cursor_.Line() > line && begins());
  }
  return true;
}

}  // namespace ox
