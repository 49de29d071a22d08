// The lexical level of the table files: control marks and framed values.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// A position in the characters of a TableText and the number of its line. A table text is a row of
/// control marks, one character between two slashes, each of which may be followed by a value in double
/// quotes; all else is comment.
class TableCursor {
 public:
  /// The characters must outlive the cursor.
  explicit TableCursor(BytesView characters) : text_(characters) {}

  /// Goes on to the next control mark and returns the character between its slashes, whatever it is. The
  /// position stays on the closing slash, which may open the next mark.
  char FindControlMark();

  /// The value that begins directly behind the mark just found, without its quotes. Empty when no quote
  /// follows, when the line ends before the closing quote, or when nothing stands between the quotes. A part
  /// of the characters.
  BytesView ReadFramedValue();

  /// Counts a line whose end was read as a mark, behind which the position stands.
  void CountLine() { ++line_; }

  /// Whether the mark that stands behind the end of every text has been found.
  bool AtEnd() const { return position_ + 1 >= text_.size(); }

  /// Number of the current line, from 1; one past the last line at the end of the text.
  int Line() const { return line_; }

 private:
  BytesView text_;
  std::size_t position_ = 0;
  int line_ = 1;
};

}  // namespace ox
