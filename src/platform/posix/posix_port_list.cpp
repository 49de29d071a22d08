// A port as it is, without opening it.
#include "platform/posix/posix_port_list.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/port_holder.h"
#include "platform/posix/port_names.h"
#include "platform/posix/serial_hardware.h"

namespace ox {
namespace {

constexpr std::string_view kBuiltIn = "eingebaute Schnittstelle";

void LookAtUse(const HostFolders& host, const std::string& path, PortEntry& entry) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return;
  if (!S_ISCHR(status.st_mode)) {
    entry.use = PortUse::kNotSerial;
  } else if (faccessat(AT_FDCWD, path.c_str(), R_OK | W_OK, AT_EACCESS) != 0) {
    entry.use = PortUse::kNoRights;
  } else if (const auto holder = HolderOf(host, path)) {
    entry.use = PortUse::kTaken;
    entry.holder = *holder;
  } else {
    entry.use = PortUse::kFree;
  }
}

}  // namespace

PortEntry PosixPortList::Look(int number) {
  PortEntry entry;
  const std::optional<std::string> path = FindPort(host_, number);
  if (!path) return entry;
  entry.device = DeviceBehind(*path);
  const std::string name = std::filesystem::path(entry.device).filename().string();
  entry.product = IsBuiltIn(host_, name) ? kBuiltIn : ProductOf(host_, name);
  LookAtUse(host_, *path, entry);
  return entry;
}

}  // namespace ox
