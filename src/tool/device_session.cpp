// Finding the device, and telling what is said of it.
#include "tool/device_session.h"

#include "platform/text.h"
#include "session/messages.h"
#include "tool/console_text.h"

namespace ox::tool {

DeviceSession::DeviceSession(const Console& console, const DeviceOptions& options)
    : console_(console), options_(options), settings_(SettingsOf(options)), status_(console) {
  if (!settings_.PortDevice.empty()) console.host.useDevice(settings_.PortDevice);
}

bool DeviceSession::Search() {
  portFailed_ = false;
  const auto search = options_.line.empty() ? SearchDevice : ProbeDevice;
  const bool found = search(console_.machine, settings_, *this);
  status_.Clear();
  return found;
}

bool DeviceSession::Find() {
  if (Search()) return true;
  if (!portFailed_) Say(kConnectionMessage);
  return false;
}

void DeviceSession::Say(std::string_view message) {
  status_.Clear();
  console_.Say(Lines(message));
}

void DeviceSession::Tell(std::string_view message) {
  portFailed_ = true;
  Say(message);
}

void DeviceSession::TryPair(BytesView baud, BytesView parity) {
  status_.Show("Verbindung wird geprüft: " + ToText(baud) + "," + ToText(parity));
}

}  // namespace ox::tool
