// Why a port does not work, as its user is told.
#pragma once

#include <string>

namespace ox {

/// UTF-8, German, without full stops at their ends. What is not known is empty.
struct PortFault {
  std::string device;  // what stands for the port on this host: "/dev/ttyUSB0"
  std::string reason;  // "keine Zugriffsrechte"
  std::string advice;  // what to do: "Benutzer in die Gruppe dialout aufnehmen, neu anmelden"
};

/// "COM1" and so on.
std::string PortName(int number);

/// The sentences for a person: "COM1 ist /dev/ttyUSB0: keine Zugriffsrechte. Benutzer in die ...". A device
/// without a COM number, 0, stands for itself.
std::string Sentences(int portNumber, const PortFault& fault);

}  // namespace ox
