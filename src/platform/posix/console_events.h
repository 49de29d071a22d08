// How a program without windows rests.
#pragma once

#include "platform/event_loop.h"
#include "platform/open_ports.h"

namespace ox {

/// The turns of a program on a console: there are no events but what arrives on the open ports.
class ConsoleEvents : public EventLoop {
 public:
  explicit ConsoleEvents(const OpenPorts& ports) : ports_(ports) {}

  void Yield() override {}
  void Rest() override;

 private:
  const OpenPorts& ports_;
};

}  // namespace ox
