// Opening a serial line.
#include "link/serial_line.h"

namespace ox {

void SerialLine::OpenPort() {
  if (port_->PortOpen()) return;
  port_->SetSettings(settings_.DialogueSettings());
  port_->SetCommPort(settings_.PortNumber());
  port_->Open();
}

}  // namespace ox
