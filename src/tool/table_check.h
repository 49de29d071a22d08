// Everything that can be said of a set of tables before a device sees them.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tables/table_images.h"
#include "tool/table_files.h"

namespace ox::tool {

struct Finding {
  std::string path;
  int line;  ///< 0 for the whole file
  std::string text;
};

struct TableReport {
  std::vector<Finding> faults;    ///< what the windows refuse
  std::vector<Finding> warnings;  ///< legal, but a trap
  /// Of each file, in the order of TableKind; text empty where it has faults or could not be read.
  std::vector<Finding> summaries;
  std::optional<TableImages> images;  ///< of three tables that fit together
};

/// Checks each table by itself, and together those that are sound.
TableReport CheckTables(const TableSet& set);

/// Faults and warnings, each "file:line: text".
void WriteFindings(const TableReport& report, std::ostream& to, bool colours);

/// The linked measuring-point table of a complete set; empty, with the reasons among the faults, when the
/// tables do not fit together.
Bytes LinkTables(const TableSet& set, std::vector<Finding>& faults);

}  // namespace ox::tool
