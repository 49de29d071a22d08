// Ports with somebody who watches what goes over the line.
#pragma once

#include <memory>

#include "platform/serial_port.h"

namespace ox::bench {

/// Is told of all that a port sends and receives.
class PortTap {
 public:
  virtual ~PortTap() = default;
  virtual void BeforeOutput(BytesView /*bytes*/) {}
  virtual void AfterOutput(BytesView /*bytes*/) {}
  /// Something has arrived.
  virtual void AfterInput(BytesView /*bytes*/) {}
};

/// Makes the ports that `real` makes, with the tap on each. Both outlive the ports.
class TappedPorts : public SerialPorts {
 public:
  TappedPorts(SerialPorts& real, PortTap& tap) : real_(real), tap_(tap) {}
  std::unique_ptr<SerialPort> Create() override;

 private:
  SerialPorts& real_;
  PortTap& tap_;
};

}  // namespace ox::bench
