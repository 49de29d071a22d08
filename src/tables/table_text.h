// The text of a table file, in the one form that the table parsers read.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "platform/text.h"

namespace ox {

/// The lines of a table file, each followed by one CR, with no LF. Lines of the file may end with CR LF, LF
/// or CR; a last line without end counts as a line. An empty file gives no lines.
class TableText {
 public:
  /// The mark that stands behind the end of every text; no table knows it.
  static constexpr char kEndMark = '*';

  /// `file` is the content of the file, Windows-1252 or UTF-8.
  explicit TableText(BytesView file);

  /// What the parsers scan: the lines, Windows-1252, and behind them kEndMark between slashes. A character
  /// that has no byte stands here as LF, which no value may hold.
  BytesView Characters() const { return text_.Characters(); }

  /// A part of Characters() as text for people, as it is written in the file. The view points into them.
  std::string Written(BytesView part) const;

  /// The text of one line (counted from 1) without its CR, as it is written in the file; empty when there are
  /// fewer lines.
  std::string GetLineText(int line) const;

 private:
  FileText text_;
};

}  // namespace ox
