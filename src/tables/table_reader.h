// What the parsers of the three table files have in common: expecting marks, reading fields, reporting
// errors.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/bytes.h"
#include "tables/table_cursor.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// Reads a table text piece by piece. The first thing that is not as expected is reported to the user, once,
/// and the call returns false or the empty string; the parser then gives up.
class TableReader {
 public:
  /// Text and messages must outlive the reader.
  TableReader(const TableText& tableText, TableMessages& messages);

  /// Goes on to the next control mark, which must be `expected`.
  bool ReadMark(char expected);

  /// Goes on to the next control mark, which must be one of the two.
  bool ReadMark(char expected, char orElse);

  /// The control mark just read.
  char Mark() const { return mark_; }

  /// The value of the mark just read; `name` is what the report calls it. A part of the
  /// table text.
  BytesView ReadValue(std::string_view name);

  /// As ReadValue, for a text of at most `maxLength` characters, translated to the device's characters;
  /// `tooLong` is the report for a longer one.
  Bytes ReadText(std::string_view name, std::size_t maxLength, std::string_view tooLong);

  /// A text value, as ReadValue gave it, translated to the device's characters.
  Bytes Translate(BytesView value);

  /// Reports an error in the current line; `specific` is UTF-8 and begins with ", ". Always false.
  bool Fail(std::string_view specific);

 private:
  const TableText& text_;
  TableCursor cursor_;
  TableMessages& messages_;
  char mark_ = TableText::kEndMark;
};

}  // namespace ox
