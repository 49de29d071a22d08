// Reading, replacing and appending to files of this host.
#include "platform/win32/win32_files.h"

#include <algorithm>
#include <utility>

#include "platform/win32/file_writing.h"
#include "platform/win32/host_path.h"
#include "platform/win32/open_file.h"
#include "platform/win32/temporary_file.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr std::size_t kReadSize = 65536;  // bytes

/// What a link leads to; nothing when it leads nowhere.
std::optional<std::wstring> WithoutLinks(const std::wstring& path) {
  const DWORD marks = GetFileAttributesW(path.c_str());
  if (marks == INVALID_FILE_ATTRIBUTES || (marks & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  const Handle file = OpenAny(path);
  if (!file.Valid()) return std::nullopt;
  std::wstring target(GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()),
                                                 FILE_NAME_NORMALIZED);
  if (length == 0 || length >= target.size()) return std::nullopt;
  target.resize(length);
  return target;
}

/// Whether an existing file may be written. A move into its place checks only some of its rights. Somebody
/// who has it open may still let it be replaced.
bool MayBeWritten(const std::wstring& path, DWORD marks) {
  if ((marks & FILE_ATTRIBUTE_READONLY) != 0) return false;
  const Handle file = OpenFile(path, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
  return IsRegular(file) || (!file.Valid() && GetLastError() == ERROR_SHARING_VIOLATION);
}

/// Replaces the content of an open file.
bool Overwrite(const Handle& file, BytesView content) {
  return SetFilePointerEx(file.Get(), {}, nullptr, FILE_BEGIN) != FALSE && WriteAll(file, content) &&
         SetEndOfFile(file.Get()) != FALSE && HandToDisk(file);
}

/// Puts a new file in the place of the target; returns 0, or the error that it failed at.
DWORD ReplaceByNewFile(const std::wstring& target, bool exists, BytesView content) {
  TemporaryFile::RemoveLeftovers(FolderOf(target));
  TemporaryFile file(target);
  const bool replaced = file.Write(content) && (!exists || file.TakeRightsOfTarget()) && file.MoveIntoPlace();
  return replaced ? 0 : GetLastError();
}

std::optional<Bytes> ReadAll(const Handle& file, std::size_t limit) {
  Bytes content;
  while (content.size() < limit) {
    const std::size_t before = content.size();
    const std::size_t room = std::min(kReadSize, limit - before);
    content.resize(before + room);
    DWORD count = 0;
    const BOOL read =
        ReadFile(file.Get(), content.data() + before, static_cast<DWORD>(room), &count, nullptr);
    if (read == FALSE) return std::nullopt;
    content.resize(before + count);
    if (count == 0) break;
  }
  return content;
}

class Win32AppendFile : public AppendFile {
 public:
  Win32AppendFile(Handle file, bool toDisk) : file_(std::move(file)), toDisk_(toDisk) {}

  bool Append(BytesView bytes) override { return WriteAll(file_, bytes) && (!toDisk_ || HandToDisk(file_)); }

 private:
  Handle file_;
  bool toDisk_;  // waits until the bytes are there
};

std::unique_ptr<AppendFile> AppendTo(const std::string& path, DWORD whether, bool toDisk) {
  const auto full = HostPath(path);
  if (!full) return nullptr;
  Handle file = OpenFile(*full, FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE, whether);
  if (!IsRegular(file)) return nullptr;
  return std::make_unique<Win32AppendFile>(std::move(file), toDisk);
}

}  // namespace

Win32Files::Win32Files() {
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

std::optional<Bytes> Win32Files::Read(const std::string& path, std::size_t limit) {
  const auto full = HostPath(path);
  if (!full) return std::nullopt;
  const Handle file = OpenFile(*full, GENERIC_READ, kShareAll, OPEN_EXISTING);
  return IsRegular(file) ? ReadAll(file, limit) : std::nullopt;
}

bool Win32Files::Replace(const std::string& path, BytesView content) {
  const auto full = HostPath(path);
  const auto target = full ? WithoutLinks(*full) : std::nullopt;
  if (!target) return false;
  const DWORD marks = GetFileAttributesW(target->c_str());
  const bool exists = marks != INVALID_FILE_ATTRIBUTES;
  if (exists && !MayBeWritten(*target, marks)) return false;
  const DWORD error = ReplaceByNewFile(*target, exists, content);
  if (error == 0) return true;
  if (!exists || !IsRefusal(error)) return false;
  // The folder takes no new file, or somebody has the old one open and does not let it go.
  const Handle file = OpenFile(*target, GENERIC_READ | GENERIC_WRITE, kShareAll, OPEN_EXISTING);
  if (!IsRegular(file)) return false;
  const std::optional<Bytes> before = ReadAll(file, kNoLimit);
  const bool written = Overwrite(file, content);
  if (!written && before) Overwrite(file, *before);
  return written;
}

bool Win32Files::SameFile(const std::string& one, const std::string& other) {
  const auto first = HostPath(one);
  const auto second = HostPath(other);
  return first && second && LeadToOneFile(*first, *second);
}

bool Win32Files::Exists(const std::string& path) {
  const auto full = HostPath(path);
  return full && GetFileAttributesW(full->c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::unique_ptr<AppendFile> Win32Files::OpenForAppending(const std::string& path) {
  return AppendTo(path, OPEN_ALWAYS, true);
}

std::unique_ptr<AppendFile> Win32Files::MakeLog(const std::string& path) {
  return AppendTo(path, CREATE_NEW, false);
}

std::optional<std::uintmax_t> Win32Files::SizeOf(const std::string& path) {
  const auto full = HostPath(path);
  if (!full) return std::nullopt;
  LARGE_INTEGER size{};
  const Handle file = OpenAny(*full);
  if (!IsRegular(file) || GetFileSizeEx(file.Get(), &size) == FALSE) return std::nullopt;
  return static_cast<std::uintmax_t>(size.QuadPart);
}

bool Win32Files::Remove(const std::string& path) {
  const auto full = HostPath(path);
  return full && DeleteFileW(full->c_str()) != FALSE;
}

}  // namespace ox
