// Names, rights and the end of temporary files.
#include "platform/win32/temporary_file.h"

#include <utility>
#include <vector>

#include "platform/temporary_name.h"
#include "platform/win32/file_writing.h"
#include "platform/win32/folder_entries.h"
#include "platform/win32/host_path.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr int kMostNames = 16;  // to try, when an earlier process of our number left its files behind
constexpr DWORD kMarks = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

bool IsDead(DWORD number) {
  const Handle process(OpenProcess(SYNCHRONIZE, FALSE, number));
  if (!process.Valid()) return GetLastError() == ERROR_INVALID_PARAMETER;
  return WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0;
}

/// The list of who may do what with a file, as the host keeps it; empty where the volume knows none.
std::vector<unsigned char> RightsOf(const std::wstring& path) {
  DWORD size = 0;
  GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<unsigned char> rights(size);
  if (GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size) == FALSE)
    return {};
  return rights;
}

/// Some volumes know no rights: then there is nothing to give.
bool GiveRights(const std::wstring& from, const std::wstring& to) {
  std::vector<unsigned char> rights = RightsOf(from);
  return rights.empty() || rights == RightsOf(to) ||
         SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != FALSE;
}

}  // namespace

TemporaryFile::TemporaryFile(std::wstring target) : target_(std::move(target)) {
  for (int number = 0; number < kMostNames && !made_; ++number) {
    path_ = FolderOf(target_) + Wide(TemporaryName(GetCurrentProcessId(), number)).value_or(L"");
    file_ = Handle(CreateFileW(path_.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                               FILE_ATTRIBUTE_NORMAL, nullptr));
    makingError_ = GetLastError();
    made_ = file_.Valid();
  }
}

TemporaryFile::~TemporaryFile() {
  file_.Close();
  if (!made_) return;
  SetFileAttributesW(path_.c_str(), FILE_ATTRIBUTE_NORMAL);
  DeleteFileW(path_.c_str());
}

bool TemporaryFile::Write(BytesView content) {
  if (made_) return WriteAll(file_, content);
  SetLastError(makingError_);
  return false;
}

bool TemporaryFile::TakeRightsOfTarget() {
  const DWORD marks = GetFileAttributesW(target_.c_str());
  if (marks == INVALID_FILE_ATTRIBUTES) return false;
  if (!GiveRights(target_, path_)) return false;
  return (marks & kMarks) == 0 || SetFileAttributesW(path_.c_str(), marks & kMarks) != FALSE;
}

bool TemporaryFile::MoveIntoPlace() {
  if (!HandToDisk(file_)) return false;
  file_.Close();
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExW(path_.c_str(), target_.c_str(), kHow) == FALSE) return false;
  made_ = false;
  return true;
}

void TemporaryFile::RemoveLeftovers(const std::wstring& folder) {
  const auto entries = EntriesOf(folder);
  if (!entries) return;
  for (const FolderEntry& entry : *entries) {
    const DWORD maker = MakerOf(Narrow(entry.name).value_or(""));
    if (maker != 0 && IsDead(maker)) DeleteFileW((folder + entry.name).c_str());
  }
}

}  // namespace ox
