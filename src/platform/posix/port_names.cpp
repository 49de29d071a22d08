// Which device of this host is the port COMn.
#include "platform/posix/port_names.h"

#include <sys/stat.h>

#include <filesystem>
#include <system_error>

#include "platform/serial_port.h"

namespace ox {

std::string PortPath(int number) {
  if (number < 1) throw PortError("gibt es nicht", "Im Menü \"COM:\" eine Schnittstelle wählen");
  // A link whose device is unplugged still says which device is meant; the built-in port would be the wrong
  // one.
  struct stat entry {};
  if (lstat(PortName(number).c_str(), &entry) == 0) return PortName(number);
  return "/dev/ttyS" + std::to_string(number - 1);
}

std::string DeviceBehind(const std::string& path) {
  namespace fs = std::filesystem;
  constexpr int kMostLinks = 8;
  std::error_code failed;
  fs::path behind = path;
  for (int links = 0; links < kMostLinks && fs::is_symlink(behind, failed); ++links) {
    behind = behind.parent_path() / fs::read_symlink(behind, failed);
  }
  return behind.lexically_normal().string();
}

}  // namespace ox
