// Makes one table of the three that were loaded: are all parameters known, and which belong to which point.
//
// Tables are packed as told in packed_tables.h. Damaged ones end in one of the abort messages.
#pragma once

#include <optional>
#include <unordered_map>

#include "platform/bytes.h"
#include "tables/table_messages.h"

namespace ox {

/// True when every parameter number of the assignment table is defined in the parameter list; false after an
/// abort message.
bool CheckAssignmentParameters(BytesView assignments, BytesView parameters, TableMessages& messages);

/// True when the parameter list, walked in steps of kParameterStride, has an entry with this 4-digit number.
bool FindParameter(BytesView number, BytesView parameters);

/// The parameter digits of each measuring-point number: of its first assignment, when there are several.
/// Both are views into the assignment table.
using AssignmentIndex = std::unordered_map<BytesView, BytesView>;
AssignmentIndex IndexAssignments(BytesView assignments);

/// The parameter digits of a measuring point, four each. Empty when it stays without parameters: after a
/// warning, because its assignment is damaged, or because it has none and the user chose to go on. Nothing
/// when the user chose to abort.
std::optional<BytesView> FindAssignment(BytesView pointNumber, const AssignmentIndex& index,
                                        TableMessages& messages);

/// The linked measuring-point table: each entry with its parameter digits between its NUL and its 255.
/// Empty after an abort message, or when the user chose to abort.
Bytes AttachAssignments(BytesView points, BytesView assignments, TableMessages& messages);

}  // namespace ox
