// Parser of assignment tables ("*.zuo").
#pragma once

#include "platform/bytes.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// Packs an assignment table (layout: packed_tables.h) out of its table text: per measuring
/// point the marks /N/ number, /P/ parameter numbers separated by single commas; then /E/. A fault is shown
/// and gives the empty string; further ones are told only to messages that want them.
Bytes ParseZuoTable(const TableText& tableText, TableMessages& messages);

}  // namespace ox
