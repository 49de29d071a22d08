// Maker and model, from the system's list of devices.
#include "platform/win32/adapter_name.h"

#include "platform/win32/windows_api.h"
// After it: the first makes the second define the class of ports.
#include <initguid.h>
// clang-format off: the third needs the types of the second.
#include <devguid.h>
#include <setupapi.h>
// clang-format on

#include <array>

#include "platform/win32/wide_text.h"

namespace ox {
namespace {

using Buffer = std::array<wchar_t, 512>;

/// All ports that are plugged in.
class PortDevices {
 public:
  PortDevices() : list_(SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT)) {}
  PortDevices(const PortDevices&) = delete;
  PortDevices& operator=(const PortDevices&) = delete;
  ~PortDevices() {
    if (list_ != INVALID_HANDLE_VALUE) SetupDiDestroyDeviceInfoList(list_);
  }

  /// The next one; false when there is none.
  bool Next() {
    device_ = {};
    device_.cbSize = sizeof device_;
    return list_ != INVALID_HANDLE_VALUE && SetupDiEnumDeviceInfo(list_, index_++, &device_) != 0;
  }

  /// "COM3"; empty when it has none.
  std::string PortName() {
    const HKEY key = SetupDiOpenDevRegKey(list_, &device_, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_QUERY_VALUE);
    if (key == INVALID_HANDLE_VALUE) return {};
    Buffer buffer{};
    DWORD size = sizeof buffer - sizeof(wchar_t);  // bytes; the value may lack its end
    const LSTATUS failed =
        RegQueryValueExW(key, L"PortName", nullptr, nullptr, reinterpret_cast<BYTE*>(buffer.data()), &size);
    RegCloseKey(key);
    return failed == ERROR_SUCCESS ? Narrow(buffer.data()).value_or("") : "";
  }

  /// One of the texts that every device has, SPDRP_...; empty when this one lacks it.
  std::string Property(DWORD which) {
    Buffer buffer{};
    const bool known = SetupDiGetDeviceRegistryPropertyW(list_, &device_, which, nullptr,
                                                         reinterpret_cast<BYTE*>(buffer.data()),
                                                         sizeof buffer - sizeof(wchar_t), nullptr) != 0;
    return known ? Narrow(buffer.data()).value_or("") : "";
  }

 private:
  HDEVINFO list_;
  SP_DEVINFO_DATA device_{};
  DWORD index_ = 0;
};

}  // namespace

std::string AdapterOf(const std::string& port) {
  PortDevices devices;
  while (devices.Next()) {
    if (devices.PortName() == port)
      return AdapterName(devices.Property(SPDRP_MFG), devices.Property(SPDRP_FRIENDLYNAME), port);
  }
  return {};
}

std::string AdapterName(const std::string& maker, const std::string& name, const std::string& port) {
  const std::string added = " (" + port + ")";
  std::string text = name;
  if (text.ends_with(added)) text.erase(text.size() - added.size());
  const bool telling = !maker.empty() && !maker.starts_with('(') && !text.starts_with(maker);
  return telling ? maker + " " + text : text;
}

}  // namespace ox
