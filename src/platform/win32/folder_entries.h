// What lies in a folder of this host.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ox {

struct FolderEntry {
  std::wstring name;
  unsigned long marks;  // the host's: FILE_ATTRIBUTE_...
};

/// All entries of a folder but itself and the one above it; nothing when it cannot be read. `folder` is a
/// full path (HostPath) with its separator at the end.
std::optional<std::vector<FolderEntry>> EntriesOf(const std::wstring& folder);

}  // namespace ox
