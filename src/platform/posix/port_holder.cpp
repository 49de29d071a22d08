// What procfs says of locks and open files.
#include "platform/posix/port_holder.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <system_error>

#include "platform/posix/pseudo_terminal.h"
#include "platform/utf8.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

/// How the list of locks names a file: device and inode number, "00:05:1234".
std::string LockNameOf(const struct stat& file) {
  std::ostringstream name;
  name << std::hex << std::setfill('0') << std::setw(2) << major(file.st_dev) << ":" << std::setw(2)
       << minor(file.st_dev) << std::dec << ":" << file.st_ino;
  return name.str();
}

std::string NameOf(const HostFolders& host, const std::string& process) {
  std::string name;
  std::getline(std::ifstream(host.processes / process / "comm"), name);
  return IsUtf8(name) ? name : std::string();
}

/// The number of the process that holds a lock on the file; empty when there is none.
std::string LockerOf(const HostFolders& host, const struct stat& file, const std::string& self) {
  const std::string wanted = LockNameOf(file);
  std::ifstream locks(host.processes / "locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream fields(line);
    std::string number, kind, mode, access, process, name;
    // Who waits for a lock has an arrow in its second field, and so none of its names in the sixth.
    fields >> number >> kind >> mode >> access >> process >> name;
    if (name == wanted && process != self) return process;
  }
  return {};
}

bool HasOpen(const fs::path& process, const fs::path& device) {
  std::error_code failed;
  for (fs::directory_iterator file(process / "fd", failed), end; !failed && file != end;
       file.increment(failed)) {
    std::error_code gone;
    if (fs::read_symlink(file->path(), gone) == device) return true;
  }
  return false;
}

/// The number of a process, among those whose files may be seen, that has the device open; else empty.
std::string UserOf(const HostFolders& host, const fs::path& device, const std::string& self) {
  std::error_code failed;
  for (fs::directory_iterator process(host.processes, failed), end; !failed && process != end;
       process.increment(failed)) {
    std::string number = process->path().filename().string();
    if (!std::ranges::all_of(number, [](char digit) { return digit >= '0' && digit <= '9'; })) continue;
    if (number != self && HasOpen(process->path(), device)) return number;
  }
  return {};
}

}  // namespace

std::optional<std::string> HolderOf(const HostFolders& host, const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return std::nullopt;
  const std::string self = std::to_string(getpid());
  std::string process = LockerOf(host, file, self);
  std::error_code failed;
  // The far end of a pseudo-terminal may have this one open as well.
  if (process.empty() && !IsPseudoTerminalNumber(file.st_rdev))
    process = UserOf(host, fs::canonical(path, failed), self);
  if (process.empty()) return std::nullopt;
  return NameOf(host, process);
}

}  // namespace ox
