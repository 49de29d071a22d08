// What the user is told of a port that cannot be opened, or that breaks in use.
#include "link/port_failure.h"

namespace ox {

std::string PortFailure(const SessionSettings& settings, PortNaming naming) {
  const bool named = naming == PortNaming::kCom && settings.PortDevice.empty();
  return (named ? "COM" : "") + settings.PortText() + ": lässt sich nicht öffnen!";
}

}  // namespace ox
