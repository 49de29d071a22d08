// How a program without windows rests.
#pragma once

#include <optional>

#include "platform/event_loop.h"
#include "platform/open_ports.h"
#include "platform/wait_handle.h"

namespace ox {

/// The turns of a program on a console: what arrives on the open ports, and that somebody wants the program
/// to end. Each host rests in its own way, in its folder.
class ConsoleEvents : public EventLoop {
 public:
  explicit ConsoleEvents(const OpenPorts& ports) : ports_(ports) {}

  /// Notices from now on what `requests` (EndRequests::Handle) brings; the flag is set in a turn that rests.
  const bool& Watch(WaitHandle requests) {
    requests_ = requests;
    endRequested_ = false;
    return endRequested_;
  }

  void Yield() override {}
  void Rest() override;

 private:
  const OpenPorts& ports_;
  std::optional<WaitHandle> requests_;  // until one has come: it stays ready
  bool endRequested_ = false;
};

}  // namespace ox
