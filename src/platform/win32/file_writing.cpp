// Writing to an open file of this host.
#include "platform/win32/file_writing.h"

#include <algorithm>
#include <array>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr std::size_t kLargestWrite = std::size_t{1} << 24;  // bytes; a share may refuse larger ones

}  // namespace

bool WriteAll(const Handle& file, BytesView bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto some = static_cast<DWORD>(std::min(bytes.size(), kLargestWrite));
    if (WriteFile(file.Get(), bytes.data(), some, &written, nullptr) == FALSE) return false;
    if (written == 0) {  // nothing was refused, nothing was taken
      SetLastError(ERROR_DISK_FULL);
      return false;
    }
    bytes.remove_prefix(written);
  }
  return true;
}

bool HandToDisk(const Handle& file) {
  if (FlushFileBuffers(file.Get()) != FALSE) return true;
  const DWORD error = GetLastError();
  return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
}

bool IsRefusal(unsigned long error) {
  constexpr std::array<DWORD, 7> kRefusals = {
      ERROR_ACCESS_DENIED, ERROR_WRITE_PROTECT,    ERROR_SHARING_VIOLATION, ERROR_LOCK_VIOLATION,
      ERROR_NOT_SUPPORTED, ERROR_INVALID_FUNCTION, ERROR_PRIVILEGE_NOT_HELD};
  return std::ranges::find(kRefusals, error) != kRefusals.end();
}

}  // namespace ox
