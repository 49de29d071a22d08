// A serial device of this host, taken for this program alone.
#include "platform/posix/serial_device.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "platform/posix/pseudo_terminal.h"
#include "platform/serial_port.h"

namespace ox {
namespace {

/// The group that the user must belong to in order to use the device; empty when the user belongs to it or it
/// would not help.
std::string GroupHint(const std::string& path) {
  constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || (status.st_mode & kGroupMayUse) != kGroupMayUse) return {};
  const bool member = status.st_gid == getegid() || group_member(status.st_gid) != 0;
  if (member || status.st_uid == geteuid()) return {};  // the owner's rights go before the group's
  const group* const entry = getgrgid(status.st_gid);
  const std::string name = entry != nullptr ? entry->gr_name : std::to_string(status.st_gid);
  return " (nur für Mitglieder der Gruppe \"" + name + "\")";
}

std::string ReasonOf(int error, const std::string& path) {
  switch (error) {
    case EACCES:
    case EPERM:
      return "keine Zugriffsrechte" + GroupHint(path);
    case EBUSY:
    case EWOULDBLOCK:
      return "von einem anderen Programm belegt";
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case EIO:
    case ELOOP:
    case ENOTDIR:
      return "nicht vorhanden";
    case ENOTTY:
    case EISDIR:
      return "keine serielle Schnittstelle";
    default:
      return std::generic_category().message(error);
  }
}

}  // namespace

SerialDevice::SerialDevice(const std::string& path)
    : descriptor_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  // The exclusive mark does not stop a privileged program, the lock does; the lock comes first, so that the
  // mark of another holder is never touched.
  const bool taken = descriptor_.Valid() && isatty(Number()) == 1 && flock(Number(), LOCK_EX | LOCK_NB) == 0;
  // A pseudo-terminal lives on at its other end and would keep the mark of a program that was killed.
  marked_ = taken && !IsPseudoTerminal(Number());
  if (!taken || (marked_ && ioctl(Number(), TIOCEXCL) != 0)) throw PortError(ReasonOf(errno, path));
}

SerialDevice::~SerialDevice() {
  if (marked_) ioctl(Number(), TIOCNXCL);
}

}  // namespace ox
