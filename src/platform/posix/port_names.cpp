// Which device of this host is the port COMn.
#include "platform/posix/port_names.h"

#include <algorithm>
#include <cstddef>
#include <system_error>
#include <vector>

#include "platform/port_fault.h"
#include "platform/posix/serial_hardware.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

/// A session names its port by one digit.
constexpr int kHighestPort = 9;

std::optional<std::string> EntryOf(int number) {
  // A link whose device is unplugged still says which device is meant; another port would be the wrong one.
  std::error_code failed;
  const std::string name = PortName(number);
  return fs::exists(fs::symlink_status(name, failed)) ? std::optional(name) : std::nullopt;
}

std::optional<std::string> BuiltIn(const HostFolders& host, int number) {
  const std::string name = "ttyS" + std::to_string(number - 1);
  return IsBuiltIn(host, name) ? std::optional((host.devices / name).string()) : std::nullopt;
}

/// The entry or the built-in port of that number.
std::optional<std::string> OwnDevice(const HostFolders& host, int number) {
  const std::optional<std::string> entry = EntryOf(number);
  return entry ? entry : BuiltIn(host, number);
}

/// The devices of the adapters that no entry leads to.
std::vector<std::string> FreeAdapters(const HostFolders& host) {
  std::vector<std::string> devices;
  for (const std::string& name : Adapters(host)) devices.push_back((host.devices / name).string());
  for (int number = 1; number <= kHighestPort && !devices.empty(); ++number) {
    if (const auto entry = EntryOf(number)) std::erase(devices, DeviceBehind(*entry));
  }
  return devices;
}

}  // namespace

std::optional<std::string> FindPort(const HostFolders& host, int number) {
  if (number < 1 || number > kHighestPort) return std::nullopt;
  if (auto device = OwnDevice(host, number)) return device;
  std::size_t lowerFree = 0;
  for (int lower = 1; lower < number; ++lower) lowerFree += OwnDevice(host, lower) ? 0 : 1;
  const std::vector<std::string> adapters = FreeAdapters(host);
  return lowerFree < adapters.size() ? std::optional(adapters[lowerFree]) : std::nullopt;
}

bool IsEntry(const std::string& path) {
  return !fs::path(path).is_absolute();
}

std::string DeviceBehind(const std::string& path) {
  constexpr int kMostLinks = 40;  // the system follows no more
  std::error_code failed;
  fs::path behind = fs::absolute(path, failed);
  for (int links = 0; links < kMostLinks && fs::is_symlink(behind, failed); ++links) {
    behind = behind.parent_path() / fs::read_symlink(behind, failed);
  }
  return behind.lexically_normal().string();
}

}  // namespace ox
