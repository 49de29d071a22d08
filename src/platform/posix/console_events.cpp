// Resting until something arrives on an open port.
#include "platform/posix/console_events.h"

#include <poll.h>

#include <vector>

namespace ox {

void ConsoleEvents::Rest() {
  constexpr int kLongest = 50;  // milliseconds
  std::vector<pollfd> awaited;
  for (const WaitHandle handle : ports_.Handles()) awaited.push_back({static_cast<int>(handle), POLLIN, 0});
  poll(awaited.data(), awaited.size(), kLongest);
}

}  // namespace ox
