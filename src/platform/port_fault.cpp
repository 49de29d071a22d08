// How device, reason and advice are put together.
#include "platform/port_fault.h"

namespace ox {

std::string PortName(int number) {
  return "COM" + std::to_string(number);
}

std::string Sentences(int portNumber, const PortFault& fault) {
  std::string text = PortName(portNumber);
  if (!fault.device.empty()) text += " ist " + fault.device;
  text += ": " + fault.reason + ".";
  if (!fault.advice.empty()) text += " " + fault.advice + ".";
  return text;
}

}  // namespace ox
