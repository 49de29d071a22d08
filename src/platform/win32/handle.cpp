// Handles and events.
#include "platform/win32/handle.h"

#include "platform/win32/windows_api.h"

namespace ox {

Handle::Handle(void* value) : value_(value == INVALID_HANDLE_VALUE ? nullptr : value) {}

void Handle::Close() {
  if (Valid()) CloseHandle(std::exchange(value_, nullptr));
}

Handle NewEvent() {
  return Handle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

}  // namespace ox
