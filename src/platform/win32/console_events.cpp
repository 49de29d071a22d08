// Resting until something arrives.
#include "platform/console_events.h"

#include <vector>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

HANDLE EventOf(WaitHandle handle) {
  return reinterpret_cast<HANDLE>(handle);
}

}  // namespace

void ConsoleEvents::Rest() {
  constexpr DWORD kLongest = 50;  // milliseconds
  std::vector<HANDLE> awaited;
  for (const WaitHandle handle : ports_.Handles()) awaited.push_back(EventOf(handle));
  if (requests_) awaited.push_back(EventOf(*requests_));
  const auto count = static_cast<DWORD>(awaited.size());
  const bool waited =
      count > 0 && WaitForMultipleObjects(count, awaited.data(), FALSE, kLongest) != WAIT_FAILED;
  if (!waited) Sleep(kLongest);
  if (!requests_ || WaitForSingleObject(EventOf(*requests_), 0) != WAIT_OBJECT_0) return;
  endRequested_ = true;
  requests_.reset();
}

}  // namespace ox
