// Folders and drives of this host.
#include <algorithm>
#include <string>

#include "platform/win32/folder_entries.h"
#include "platform/win32/host_path.h"
#include "platform/win32/open_file.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr DWORD kHidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
constexpr int kMostDrives = 'Z' - 'A' + 1;

bool ComesBefore(const std::wstring& one, const std::wstring& other) {
  return CompareStringOrdinal(one.c_str(), -1, other.c_str(), -1, TRUE) == CSTR_LESS_THAN;
}

/// Names of the entries that are folders, or that are none.
std::optional<std::vector<std::string>> NamesIn(const std::string& folder, bool folders) {
  auto full = HostPath(folder);
  if (full && !full->ends_with(L'\\')) *full += L'\\';
  auto entries = full ? EntriesOf(*full) : std::nullopt;
  if (!entries) return std::nullopt;
  std::ranges::sort(*entries, ComesBefore, &FolderEntry::name);
  std::vector<std::string> names;
  for (const FolderEntry& entry : *entries) {
    const auto name = Narrow(entry.name);
    const bool isFolder = (entry.marks & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!name || isFolder != folders || (entry.marks & kHidden) != 0) continue;
    const bool isLink = (entry.marks & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!isLink || OpenAny(*full + entry.name).Valid()) names.push_back(*name);
  }
  return names;
}

}  // namespace

std::string Win32Files::WorkingFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  return Narrow(folder).value_or("");
}

std::vector<std::string> Win32Files::Drives() {
  std::vector<std::string> drives;
  const DWORD present = GetLogicalDrives();
  for (int number = 0; number < kMostDrives; ++number) {
    if ((present >> number & 1U) != 0) drives.push_back({static_cast<char>('A' + number), ':'});
  }
  return drives;
}

std::optional<std::vector<std::string>> Win32Files::FoldersIn(const std::string& folder) {
  return NamesIn(folder, true);
}

std::optional<std::vector<std::string>> Win32Files::FilesIn(const std::string& folder) {
  return NamesIn(folder, false);
}

}  // namespace ox
