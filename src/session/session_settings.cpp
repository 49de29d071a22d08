// What the session settings derive from their fields.
#include "session/session_settings.h"

#include <charconv>

#include "platform/text.h"

namespace ox {

int SessionSettings::PortNumber() const {
  int number = 0;
  if (!PortDevice.empty()) return number;
  const auto [end, error] = std::from_chars(ComPort.data(), ComPort.data() + ComPort.size(), number);
  return error == std::errc() ? number : 0;
}

std::string SessionSettings::PortText() const {
  return PortDevice.empty() ? ToText(ComPort) : PortDevice;
}

Bytes SessionSettings::SoftwareVersion() const {
  return DeviceIdent.size() > kVersionOffset ? DeviceIdent.substr(kVersionOffset, kVersionLength) : Bytes();
}

}  // namespace ox
