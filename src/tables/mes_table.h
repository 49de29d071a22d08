// Parser of measuring-point tables ("*.mes").
#pragma once

#include "platform/bytes.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// Packs a measuring-point table (layout: packed_tables.h) out of its table text: the marks /S/
/// version, then per office /A/ name, /Z/ code, per point /N/ number, /D/ and /M/ differences, /T/ name, and
/// /B/; then /E/. Texts are translated to the device's characters. A fault is shown and gives the empty
/// string; further ones are told only to messages that want them.
Bytes ParseMesTable(const TableText& tableText, TableMessages& messages);

}  // namespace ox
