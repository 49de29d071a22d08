// Writing to an open file of this host.
#include "platform/posix/file_writing.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace ox {

bool WriteAll(const Descriptor& file, BytesView bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file.Number(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written == 0) errno = ENOSPC;  // nothing was refused, nothing was taken
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

bool HandToDisk(const Descriptor& file) {
  while (fsync(file.Number()) != 0) {
    if (errno != EINTR) return errno == EINVAL || errno == ENOSYS || errno == ENOTSUP;
  }
  return true;
}

bool IsRefusal(int error) {
  constexpr std::array kRefusals = {EACCES, EPERM, EROFS, EBUSY, EINVAL, ENOSYS, ENOTSUP};
  return std::find(kRefusals.begin(), kRefusals.end(), error) != kRefusals.end();
}

}  // namespace ox
