// Taking and giving back what keeps this host awake.
#include "platform/win32/win32_keep_awake.h"

#include <exception>

#include "platform/win32/shutdown_guard.h"
#include "platform/win32/windows_api.h"

namespace ox {

Win32KeepAwake::Win32KeepAwake() = default;
Win32KeepAwake::~Win32KeepAwake() = default;

void Win32KeepAwake::Take() noexcept {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  try {
    guard_ = std::make_unique<ShutdownGuard>();
  } catch (const std::exception&) {
    guard_ = nullptr;  // without memory or a thread the run goes on unguarded
  }
}

void Win32KeepAwake::Release() noexcept {
  guard_ = nullptr;
  SetThreadExecutionState(ES_CONTINUOUS);
}

}  // namespace ox
