// Resting until something arrives.
#include "platform/console_events.h"

#include <poll.h>

#include <vector>

namespace ox {

void ConsoleEvents::Rest() {
  constexpr int kLongest = 50;  // milliseconds
  std::vector<pollfd> awaited;
  for (const WaitHandle handle : ports_.Handles()) awaited.push_back({static_cast<int>(handle), POLLIN, 0});
  if (requests_) awaited.push_back({static_cast<int>(*requests_), POLLIN, 0});
  poll(awaited.data(), awaited.size(), kLongest);
  if (!requests_ || awaited.back().revents == 0) return;
  endRequested_ = true;
  requests_.reset();
}

}  // namespace ox
