// What is legal in the tables and yet not what their author will have meant.
#pragma once

#include <string>
#include <vector>

#include "platform/bytes.h"
#include "tables/table_fields.h"

namespace ox {

struct TableTrap {
  int line;
  std::string text;  ///< UTF-8
};

using TableFields = std::vector<TableField>;
using TableTraps = std::vector<TableTrap>;

// Each takes the fields of tables that their parsers have taken. What is found is in the order of the lines.

/// Points that stand there twice; offices without points; what a device of generation III does not take or
/// show whole.
TableTraps PointTableTraps(const TableFields& points);

/// Parameters that stand there twice, and units that are too short.
TableTraps ParameterListTraps(const TableFields& parameters);

/// Points that are assigned twice.
TableTraps AssignmentTableTraps(const TableFields& assignments);

/// Lines of the measuring-point table: points without an assignment.
TableTraps PointsWithoutAssignment(const TableFields& points, const TableFields& assignments);

/// Lines of the assignment table: assignments to points that are not there.
TableTraps AssignmentsToNothing(const TableFields& points, const TableFields& assignments);

/// Parameters that linking will not find in the packed parameter list, which ends it: each where the
/// assignment table names it first. No trap but a fault.
TableTraps UndefinedParameters(const TableFields& assignments, BytesView parameters);

/// Those of the lines, which ascend, whose end counts as a control mark, since it stands between two slashes.
/// Of any table text: it is what lets a parser refuse the line.
TableTraps LineEndsReadAsMarks(const TableText& text, const std::vector<int>& lines);

}  // namespace ox
