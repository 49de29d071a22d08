// Reading a folder.
#include "platform/win32/folder_entries.h"

#include "platform/win32/windows_api.h"

namespace ox {

std::optional<std::vector<FolderEntry>> EntriesOf(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  std::vector<FolderEntry> entries;
  const HANDLE search = FindFirstFileExW((folder + L'*').c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
  if (search == INVALID_HANDLE_VALUE) {
    // The root of an empty volume has not even itself in it.
    return GetLastError() == ERROR_FILE_NOT_FOUND ? std::optional(entries) : std::nullopt;
  }
  do {
    std::wstring name = found.cFileName;
    if (name != L"." && name != L"..") entries.push_back({std::move(name), found.dwFileAttributes});
  } while (FindNextFileW(search, &found) != FALSE);
  const bool whole = GetLastError() == ERROR_NO_MORE_FILES;
  FindClose(search);
  return whole ? std::optional(std::move(entries)) : std::nullopt;
}

}  // namespace ox
