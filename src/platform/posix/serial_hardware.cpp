// What sysfs says of serial ports.
#include "platform/posix/serial_hardware.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/utf8.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

/// Of USB interfaces. The package's rules for udev name the same.
constexpr std::array<std::string_view, 4> kAdapterDrivers{"ftdi_sio", "pl2303", "ch341", "cp210x"};
/// What a driver gives as the type of a port that it has not found.
constexpr std::string_view kNoPort = "0";

/// The first line of a file; empty when it cannot be read.
std::string FirstLine(const fs::path& file) {
  std::string line;
  std::getline(std::ifstream(file), line);
  return line;
}

/// The folder of a terminal's own device, behind all links; empty for a terminal without one.
fs::path DeviceFolder(const HostFolders& host, const std::string& name) {
  std::error_code failed;
  return fs::canonical(host.system / "class" / "tty" / name / "device", failed);
}

std::string DriverOf(const fs::path& device) {
  std::error_code failed;
  return fs::read_symlink(device / "driver", failed).filename().string();
}

bool IsAdapter(const fs::path& device) {
  // The device is one port of an adapter, and the folder that it lies in is the adapter's interface.
  return !device.empty() && std::ranges::count(kAdapterDrivers, DriverOf(device.parent_path())) > 0;
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Takes a run of digits or a single other character off the front.
std::string_view TakeStep(std::string_view& rest) {
  std::size_t length = 0;
  while (length < rest.size() && IsDigit(rest[length])) ++length;
  std::string_view step = rest.substr(0, std::max<std::size_t>(length, 1));
  rest.remove_prefix(step.size());
  while (step.size() > 1 && step.front() == '0') step.remove_prefix(1);
  return step;
}

/// Whether one place on the bus comes before another: numbers count by their value, "1-2" before "1-10".
bool ComesBefore(std::string_view one, std::string_view other) {
  while (!one.empty() && !other.empty()) {
    const std::string_view a = TakeStep(one);
    const std::string_view b = TakeStep(other);
    if (a.size() != b.size() && IsDigit(a.front()) && IsDigit(b.front())) return a.size() < b.size();
    if (a != b) return a < b;
  }
  return one.size() < other.size();
}

}  // namespace

bool IsBuiltIn(const HostFolders& host, const std::string& name) {
  const std::string type = FirstLine(host.system / "class" / "tty" / name / "type");
  return !type.empty() && type != kNoPort;
}

std::vector<std::string> Adapters(const HostFolders& host) {
  std::vector<std::pair<std::string, std::string>> found;  // place and name
  std::error_code failed;
  for (fs::directory_iterator entry(host.system / "class" / "tty", failed), end; !failed && entry != end;
       entry.increment(failed)) {
    const std::string name = entry->path().filename().string();
    const fs::path device = DeviceFolder(host, name);
    if (IsAdapter(device)) found.emplace_back(device.string(), name);
  }
  std::ranges::sort(found, [](const auto& a, const auto& b) { return ComesBefore(a.first, b.first); });
  std::vector<std::string> names;
  names.reserve(found.size());
  for (auto& [place, name] : found) names.push_back(std::move(name));
  return names;
}

std::string ProductOf(const HostFolders& host, const std::string& name) {
  // Above the port stands its interface, and above that the adapter itself.
  const fs::path adapter = DeviceFolder(host, name).parent_path().parent_path();
  if (adapter.empty()) return {};
  std::string product = FirstLine(adapter / "manufacturer");
  const std::string model = FirstLine(adapter / "product");
  if (!product.empty() && !model.empty()) product += " ";
  product += model;
  return IsUtf8(product) ? product : std::string();
}

}  // namespace ox
