// The ports of this host, looked up where the system tells about its devices.
#include "platform/win32/win32_port_list.h"

#include "platform/port_fault.h"
#include "platform/win32/adapter_name.h"
#include "platform/win32/device_name.h"

namespace ox {

PortEntry Win32PortList::Look(int number) {
  PortEntry entry;  // its device stays empty: a port has no name but "COM3" here
  if (!IsPluggedIn(DevicePath(number))) return entry;
  entry.use = PortUse::kPresent;
  entry.product = AdapterOf(PortName(number));
  return entry;
}

}  // namespace ox
