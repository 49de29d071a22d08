// The station tables that a command is given: which file is which, and what is in it.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tables/table_traps.h"
#include "tool/console.h"

namespace ox::tool {

enum class TableKind : std::uint8_t { kPoints, kParameters, kAssignments };
constexpr std::size_t kTableKinds = 3;

/// A table is read up to here; a thousand times what a device can hold.
constexpr std::size_t kMaxTable = std::size_t{16} * 1024 * 1024;  // bytes

/// A place in a file; line 0 stands for the whole file.
struct TableFault {
  int line;
  std::string text;  ///< UTF-8
};

/// One table file, read and parsed.
struct LoadedTable {
  std::string path;
  std::optional<TableText> text;   ///< nothing when the file could not be read
  Bytes packed;                    ///< empty when it has faults
  std::vector<TableFault> faults;  ///< the first is the one that the windows tell

  bool Sound() const { return !packed.empty(); }
};

/// The tables of a command; null where none of that kind is given.
struct TableSet {
  std::array<std::unique_ptr<LoadedTable>, kTableKinds> tables;

  const LoadedTable* Of(TableKind kind) const { return tables[static_cast<std::size_t>(kind)].get(); }
  bool Complete() const;  ///< all three are given and sound
};

/// Reads the tables. Which is which, the ending of the name tells, in capitals or not: .mes, .par or .zuo; of
/// another name, such as that of a pipe, the first mark in it. A file that cannot be read is told; the faults
/// in a file are not. Nothing when a table is of no kind or two are of the same: the user was told how to use
/// the command.
std::optional<TableSet> LoadTables(const Console& console, const std::vector<std::string>& paths);

/// What a sound table holds, on one line.
std::string DescribeTable(TableKind kind, BytesView packed);

}  // namespace ox::tool
