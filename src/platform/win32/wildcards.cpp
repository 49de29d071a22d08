// The host's own search for names.
#include "platform/win32/wildcards.h"

#include <algorithm>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr const wchar_t* kWildcards = L"*?";
constexpr const wchar_t* kSeparators = L"\\/:";

}  // namespace

std::vector<std::wstring> FilesFitting(const std::wstring& word) {
  const std::size_t name = word.find_last_of(kSeparators) + 1;  // 0 without a separator
  if (word.find_first_of(kWildcards, name) == std::wstring::npos) return {word};
  WIN32_FIND_DATAW found{};
  const HANDLE search =
      FindFirstFileExW(word.c_str(), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, 0);
  if (search == INVALID_HANDLE_VALUE) return {word};
  std::vector<std::wstring> files;
  do {
    if ((found.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN)) == 0)
      files.push_back(word.substr(0, name) + found.cFileName);
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  std::ranges::sort(files);
  return files.empty() ? std::vector{word} : files;
}

}  // namespace ox
