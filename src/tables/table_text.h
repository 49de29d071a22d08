// Turns the bytes of a table file into the one form that the table parsers read.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// Ends every line of a table text.
constexpr char kLineEnd = '\r';

/// The table text of a file: each of its lines followed by one CR, and no LF. Lines of the file may end with
/// CR LF, LF or CR; a last line without end counts as a line. An empty file gives an empty text.
/// The file is Windows-1252 already; nothing but the line ends is looked at.
Bytes BuildTableText(BytesView file);

/// The text of one line (counted from 1) without its CR; empty when the table text has fewer lines.
BytesView GetLineText(BytesView table_text, int line);

}  // namespace ox
