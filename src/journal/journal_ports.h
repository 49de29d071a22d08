// Serial ports whose openings and bytes stand in the support log.
#pragma once

#include <memory>

#include "journal/journal.h"
#include "platform/port_list.h"
#include "platform/serial_port.h"

namespace ox {

class JournalPorts : public SerialPorts {
 public:
  /// Makes the ports that `real` makes; `list` knows what they stand for. All outlive them.
  JournalPorts(SerialPorts& real, PortList& list, Journal& journal)
      : real_(real), list_(list), journal_(journal) {}

  std::unique_ptr<SerialPort> Create() override;

  /// A port is about to be opened: notes what stands for it, unless that was done already. It takes too long
  /// for every opening.
  void NoteIdentity(int number) noexcept;
  /// Somebody may have plugged in another adapter.
  void LookAgain() noexcept { noted_ = 0; }

 private:
  SerialPorts& real_;
  PortList& list_;
  Journal& journal_;
  int noted_ = 0;  // number of the port; 0: none
};

}  // namespace ox
