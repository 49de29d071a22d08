// What the parsers of the three table files have in common: expecting marks, reading fields, reporting
// errors.
#pragma once

#include <cstddef>

#include "platform/bytes.h"
#include "tables/table_cursor.h"
#include "tables/table_messages.h"

namespace ox {

/// Reads a table text piece by piece. The first thing that is not as expected is reported to the user, once,
/// and the call returns false or the empty string; the parser then gives up.
class TableReader {
 public:
  /// `messages` must outlive the reader.
  TableReader(BytesView table_text, TableMessages& messages);

  /// Goes on to the next control mark, which must be `expected`.
  bool ReadMark(char expected);

  /// Goes on to the next control mark, which must be one of the two.
  bool ReadMark(char expected, char or_else);

  /// The control mark just read.
  char mark() const { return mark_; }

  /// The value of the mark just read; `name` is what the report calls it. Lives as long as the reader.
  BytesView ReadValue(BytesView name);

  /// As ReadValue, for a text of at most `max_length` characters, translated to the device's characters;
  /// `too_long` is the report for a longer one.
  Bytes ReadText(BytesView name, std::size_t max_length, BytesView too_long);

  /// A text value translated to the device's characters.
  Bytes Translate(BytesView value);

  /// Reports an error in the current line; `specific` begins with ", ". Always false.
  bool Fail(BytesView specific);

 private:
  TableCursor cursor_;
  TableMessages& messages_;
  char mark_ = TableCursor::kEndOfText;
};

}  // namespace ox
