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

/// Reads a table text piece by piece. What is not as expected is told, and the call returns false or the
/// empty string; the parser then gives up, unless GoOn leads it to the next entry.
class TableReader {
 public:
  /// Text and messages must outlive the reader.
  TableReader(const TableText& tableText, TableMessages& messages);

  /// Goes on to the next control mark, which must be `expected`.
  bool ReadMark(char expected);

  /// Goes on to the next control mark, which must be one of the two.
  bool ReadMark(char expected, char orElse);

  /// After a fault: goes on to a mark that can begin or end an entry, one of `starts`, which the next
  /// ReadMark reads. It is the unexpected mark itself, or else the first of a later line; in a text without
  /// any, its end, where ReadMark tells what is missing. False when no further fault is wanted or none can
  /// come.
  bool GoOn(std::string_view starts);

  /// What the parser returns at the table's end mark: the packed table, or nothing after a fault.
  Bytes Result(Bytes packed) const {
    if (faulty_) packed.clear();
    return packed;
  }

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
  void NextMark();
  bool FailAtMark(std::string_view specific);

  const TableText& text_;
  TableCursor cursor_;
  TableMessages& messages_;
  char mark_ = TableText::kEndMark;
  bool unexpected_ = false;  // the mark just read is a fault
  bool ahead_ = false;       // the mark has been read for the next ReadMark
  bool faulty_ = false;
};

}  // namespace ox
