// What a packed table holds, in a few words: shown before it is written.
#pragma once

#include <string>

#include "platform/bytes.h"

namespace ox {

// Each takes a packed table (layout: packed_tables.h) and returns UTF-8 text on one line. Of a damaged table
// that is counted which can be read.

/// "Stand Netz 2026, 2 Ämter, 31 Messstellen". Of a measuring-point table, linked or not.
std::string DescribePointTable(BytesView points);

/// "12 Parameter".
std::string DescribeParameterList(BytesView parameters);

/// "31 Messstellen, 62 zugeordnete Parameter".
std::string DescribeAssignmentTable(BytesView assignments);

}  // namespace ox
