// Which device of this host is the port COMn.
#include "platform/posix/port_names.h"

#include <sys/stat.h>

#include "platform/serial_port.h"

namespace ox {

std::string PortName(int number) {
  return "COM" + std::to_string(number);
}

std::string PortPath(int number) {
  if (number < 1) throw PortError("gibt es nicht");
  // A link whose device is unplugged still says which device is meant; the built-in port would be the wrong
  // one.
  struct stat entry {};
  if (lstat(PortName(number).c_str(), &entry) == 0) return PortName(number);
  return "/dev/ttyS" + std::to_string(number - 1);
}

}  // namespace ox
