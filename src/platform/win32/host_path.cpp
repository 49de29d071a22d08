// From a path as people write it to the host's.
#include "platform/win32/host_path.h"

#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr std::wstring_view kAnyLength = L"\\\\?\\";  // in front of a path that may be of any length
constexpr std::wstring_view kShareAnyLength =
    L"\\\\?\\UNC";  // in the place of the first "\" of "\\server\share"
constexpr std::wstring_view kDevice = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";

/// The path from its drive on; empty when the host cannot make one. It turns names of devices into "\\.\NUL".
std::wstring FullPath(const std::wstring& path) {
  const DWORD room = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  std::wstring full(room, L'\0');
  const DWORD length = GetFullPathNameW(path.c_str(), room, full.data(), nullptr);
  full.resize(length < room ? length : 0);
  return full;
}

}  // namespace

std::optional<std::wstring> HostPath(const std::string& path) {
  if (path.find('\0') != std::string::npos) return std::nullopt;
  const std::optional<std::wstring> wide = Wide(path);
  if (!wide || wide->empty()) return std::nullopt;
  const std::wstring full = FullPath(*wide);
  if (full.empty() || full.starts_with(kDevice)) return std::nullopt;
  if (full.starts_with(kAnyLength)) return full;
  if (full.starts_with(kShare)) return std::wstring(kShareAnyLength) + full.substr(1);
  return std::wstring(kAnyLength) + full;
}

std::wstring FolderOf(std::wstring_view path) {
  return std::wstring(path.substr(0, path.find_last_of(L'\\') + 1));
}

}  // namespace ox
