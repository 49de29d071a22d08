// Parser of parameter lists ("*.par").
#pragma once

#include "platform/bytes.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// Packs a parameter list (layout: packed_tables.h) out of its table text: per parameter the
/// marks /P/ number, /T/ designation, /M/ unit; then /E/. A short designation is padded with blanks, a short
/// unit is not. Texts are translated to the device's characters. A fault is shown and gives the empty
/// string.
Bytes ParseParTable(const TableText& tableText, TableMessages& messages);

}  // namespace ox
