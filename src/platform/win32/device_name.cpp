// How the system names its serial ports.
#include "platform/win32/device_name.h"

#include <array>

#include "platform/port_fault.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr int kHighestPort = 256;                   // the system gives no number above it
constexpr std::wstring_view kDevices = L"\\\\.\\";  // needed from COM10 on, allowed for all
constexpr const wchar_t* kPresentPorts = L"HARDWARE\\DEVICEMAP\\SERIALCOMM";  // the drivers list them there

}  // namespace

std::wstring DevicePath(int number) {
  return number >= 1 && number <= kHighestPort ? DevicePath(PortName(number)) : std::wstring();
}

std::wstring DevicePath(const std::string& name) {
  const std::wstring wide = Wide(name).value_or(L"");
  if (wide.empty()) return {};
  return wide.starts_with(kDevices) ? wide : std::wstring(kDevices) + wide;
}

bool IsPluggedIn(const std::wstring& path) {
  HKEY ports = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kPresentPorts, 0, KEY_QUERY_VALUE, &ports) != ERROR_SUCCESS)
    return false;
  bool found = false;
  LSTATUS listed = ERROR_SUCCESS;
  for (DWORD index = 0; listed == ERROR_SUCCESS && !found; ++index) {
    std::array<wchar_t, 256> driver{};  // "\Device\Serial0"
    std::array<wchar_t, 64> port{};     // "COM1"
    DWORD driverLength = driver.size();
    DWORD portSize = sizeof port - sizeof(wchar_t);  // bytes; the value may lack its end
    listed = RegEnumValueW(ports, index, driver.data(), &driverLength, nullptr, nullptr,
                           reinterpret_cast<BYTE*>(port.data()), &portSize);
    if (listed == ERROR_MORE_DATA) listed = ERROR_SUCCESS;  // too long for a port
    found = listed == ERROR_SUCCESS && path == std::wstring(kDevices) + port.data();
  }
  RegCloseKey(ports);
  return found;
}

}  // namespace ox
