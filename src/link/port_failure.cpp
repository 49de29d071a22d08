// What the user is told of a port that cannot be opened, or that breaks in use.
#include "link/port_failure.h"

#include "platform/text.h"

namespace ox {

std::string PortFailure(const SessionSettings& settings, PortNaming naming) {
  const std::string prefix = naming == PortNaming::kCom ? "COM" : "";
  return prefix + ToText(settings.ComPort) + ": lässt sich nicht öffnen!";
}

}  // namespace ox
