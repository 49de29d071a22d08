// What stands for the ports COM1, COM2, ... of this host, and how each is told to a person.
#pragma once

#include <string>

namespace ox {

/// What can be seen of a port without opening it. Where the host tells no more than that it is there, it is
/// kPresent.
enum class PortUse { kFree, kTaken, kNoRights, kMissing, kNotSerial, kPresent };

/// UTF-8; what is not known is empty.
struct PortEntry {
  std::string device;   // "/dev/ttyUSB0"; empty when nothing stands for the port, or its name says all
  std::string product;  // maker and model of an adapter
  PortUse use = PortUse::kMissing;
  std::string holder;  // the program that has taken it
};

class PortList {
 public:
  PortList() = default;
  PortList(const PortList&) = delete;
  PortList& operator=(const PortList&) = delete;
  virtual ~PortList() = default;

  /// COM<number> as it is now. The port is not opened, and the line notices nothing.
  virtual PortEntry Look(int number) = 0;
};

/// "COM1 ist /dev/ttyUSB0 (FTDI FT232R USB UART)"; without what is not known.
std::string Identity(int number, const PortEntry& entry);

/// The same and whether the port can be used: "COM1 ist /dev/ttyUSB0 (FTDI FT232R USB UART): frei".
std::string Description(int number, const PortEntry& entry);

}  // namespace ox
