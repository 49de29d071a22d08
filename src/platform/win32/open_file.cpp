// Files by their handles.
#include "platform/win32/open_file.h"

#include <optional>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

std::optional<BY_HANDLE_FILE_INFORMATION> AskAbout(const Handle& file) {
  BY_HANDLE_FILE_INFORMATION told{};
  if (!file.Valid() || GetFileType(file.Get()) != FILE_TYPE_DISK ||
      GetFileInformationByHandle(file.Get(), &told) == FALSE) {
    return std::nullopt;
  }
  return told;
}

}  // namespace

const unsigned long kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

Handle OpenFile(const std::wstring& path, unsigned long access, unsigned long sharing,
                unsigned long creation) {
  return Handle(
      CreateFileW(path.c_str(), access, sharing, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

Handle OpenAny(const std::wstring& path) {
  // The flag allows folders.
  return Handle(CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES, kShareAll, nullptr, OPEN_EXISTING,
                            FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool IsRegular(const Handle& file) {
  const DWORD before = GetLastError();
  const auto told = AskAbout(file);
  SetLastError(before);
  return told && (told->dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool LeadToOneFile(const std::wstring& one, const std::wstring& other) {
  const Handle first = OpenAny(one);
  const Handle second = OpenAny(other);
  const auto toldOfFirst = AskAbout(first);
  const auto toldOfSecond = AskAbout(second);
  return toldOfFirst && toldOfSecond &&
         toldOfFirst->dwVolumeSerialNumber == toldOfSecond->dwVolumeSerialNumber &&
         toldOfFirst->nFileIndexHigh == toldOfSecond->nFileIndexHigh &&
         toldOfFirst->nFileIndexLow == toldOfSecond->nFileIndexLow;
}

}  // namespace ox
