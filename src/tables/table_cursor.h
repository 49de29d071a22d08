// The lexical level of the table files: control marks and framed values.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// A position in a table text (see BuildTableText) and the number of its line. A table text is a row of
/// control marks, one character between two slashes, each of which may be followed by a value in double
/// quotes; all else is comment.
class TableCursor {
 public:
  /// The mark that stands behind the end of every text; no table knows it.
  static constexpr char kEndOfText = '*';

  explicit TableCursor(BytesView table_text);

  /// Goes on to the next control mark and returns the character between its slashes, whatever it is. The
  /// position stays on the closing slash, which may open the next mark.
  char FindControlMark();

  /// The value that begins directly behind the mark just found, without its quotes. Empty when no quote
  /// follows, when the line ends before the closing quote, or when nothing stands between the quotes. The
  /// view lives as long as the cursor.
  BytesView ReadFramedValue();

  /// Number of the current line, from 1; one past the last line at the end of the text.
  int line() const { return line_; }

  /// The table text that the cursor was made for.
  BytesView table_text() const { return BytesView(text_).substr(0, length_); }

 private:
  Bytes text_;  // the table text and the end-of-text mark
  std::size_t length_;
  std::size_t position_ = 0;
  int line_ = 1;
};

}  // namespace ox
