// The readiness of the ports that are open now: what the window system's Rest waits on beside its own events.
#pragma once

#include <vector>

#include "platform/wait_handle.h"

namespace ox {

/// One for the whole host, shared by its ports and its window system. A port adds its handle, which is ready
/// while something has arrived, when it opens, and removes it when it closes or is found dead: a line that
/// has hung up is ready for ever and would keep Rest from resting.
class OpenPorts {
 public:
  void Add(WaitHandle handle) { handles_.push_back(handle); }
  void Remove(WaitHandle handle) { std::erase(handles_, handle); }

  const std::vector<WaitHandle>& Handles() const { return handles_; }

 private:
  std::vector<WaitHandle> handles_;
};

}  // namespace ox
