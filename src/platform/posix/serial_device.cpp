// A serial device of this host, taken for this program alone.
#include "platform/posix/serial_device.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>

#include <cerrno>

#include "platform/posix/opening_fault.h"
#include "platform/posix/pseudo_terminal.h"

namespace ox {

SerialDevice::SerialDevice(const std::string& path)
    : descriptor_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  // The exclusive mark does not stop a privileged program, the lock does; the lock comes first, so that the
  // mark of another holder is never touched.
  const bool taken = descriptor_.Valid() && isatty(Number()) == 1 && flock(Number(), LOCK_EX | LOCK_NB) == 0;
  // A pseudo-terminal lives on at its other end and would keep the mark of a program that was killed.
  marked_ = taken && !IsPseudoTerminal(Number());
  if (!taken || (marked_ && ioctl(Number(), TIOCEXCL) != 0)) throw OpeningFault(errno, path);
}

SerialDevice::~SerialDevice() {
  if (marked_) ioctl(Number(), TIOCNXCL);
}

}  // namespace ox
