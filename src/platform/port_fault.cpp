// How device, reason and advice are put together.
#include "platform/port_fault.h"

namespace ox {

std::string PortName(int number) {
  return "COM" + std::to_string(number);
}

std::string Sentences(int portNumber, const PortFault& fault) {
  const bool numbered = portNumber > 0 || fault.device.empty();
  std::string text = numbered ? PortName(portNumber) : fault.device;
  if (numbered && !fault.device.empty()) text += " ist " + fault.device;
  text += ": " + fault.reason + ".";
  if (!fault.advice.empty()) text += " " + fault.advice + ".";
  return text;
}

}  // namespace ox
