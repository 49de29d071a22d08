// Reading a table file.
#include "tables/table_file.h"

#include <cstddef>

namespace ox {
namespace {

/// Larger than any table. A larger file is read up to here only, and its parser reports that the end is
/// missing.
constexpr std::size_t kMaxTableFile = std::size_t{64} * 1024 * 1024;  // bytes

}  // namespace

std::optional<TableText> ReadTableText(Files& files, const std::string& path) {
  const std::optional<Bytes> content = files.Read(path, kMaxTableFile);
  if (!content) return std::nullopt;
  return TableText(*content);
}

}  // namespace ox
