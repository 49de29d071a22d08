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

/// What helps where the group of the device has rights that the user lacks; empty when the user belongs to it
/// or it would not help.
std::string GroupAdvice(const std::string& path) {
  constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || (status.st_mode & kGroupMayUse) != kGroupMayUse) return {};
  const bool member = status.st_gid == getegid() || group_member(status.st_gid) != 0;
  if (member || status.st_uid == geteuid()) return {};  // the owner's rights go before the group's
  const group* const entry = getgrgid(status.st_gid);
  const std::string name = entry != nullptr ? entry->gr_name : std::to_string(status.st_gid);
  return "Benutzer in die Gruppe " + name + " aufnehmen, neu anmelden";
}

PortError ErrorOf(int error, const std::string& path) {
  switch (error) {
    case EACCES:
    case EPERM:
      return PortError("keine Zugriffsrechte", GroupAdvice(path));
    case EBUSY:
    case EWOULDBLOCK:
      return PortError("von einem anderen Programm belegt", "Das andere Programm beenden");
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case EIO:
    case ELOOP:
    case ENOTDIR:
      return PortError("nicht vorhanden",
                       "Adapter einstecken oder im Menü \"COM:\" eine andere Schnittstelle wählen");
    case ENOTTY:
    case EISDIR:
      return PortError("keine serielle Schnittstelle");
    default:
      return PortError(std::generic_category().message(error));
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
  if (!taken || (marked_ && ioctl(Number(), TIOCEXCL) != 0)) throw ErrorOf(errno, path);
}

SerialDevice::~SerialDevice() {
  if (marked_) ioctl(Number(), TIOCNXCL);
}

}  // namespace ox
