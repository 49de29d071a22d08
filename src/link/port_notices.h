// Serial ports that tell the quiet lines why they do not work.
#pragma once

#include "platform/serial_port.h"
#include "ui/notices.h"

namespace ox {

/// The host's ports. A port that cannot be opened, or that breaks in use, is noted before anybody else hears
/// of it; the next opening that succeeds withdraws the notice.
class PortsWithNotices : public SerialPorts {
 public:
  /// Both outlive the ports.
  PortsWithNotices(SerialPorts& ports, Notices& notices) : ports_(ports), notices_(notices) {}

  std::unique_ptr<SerialPort> Create() override;

 private:
  SerialPorts& ports_;
  Notices& notices_;
};

}  // namespace ox
