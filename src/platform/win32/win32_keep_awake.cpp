// Taking and giving back what keeps this host awake.
#include "platform/win32/win32_keep_awake.h"

#include <exception>

#include "platform/win32/shutdown_guard.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

/// A console that is closed ends its programs some seconds later, in the midst of a run. So its close box is
/// off meanwhile, where the console has one that obeys.
void LetConsoleBeClosed(bool allowed) {
  const HMENU menu = GetSystemMenu(GetConsoleWindow(), FALSE);
  if (menu == nullptr) return;  // no console
  EnableMenuItem(menu, SC_CLOSE,
                 static_cast<UINT>(MF_BYCOMMAND) | static_cast<UINT>(allowed ? MF_ENABLED : MF_GRAYED));
}

}  // namespace

Win32KeepAwake::Win32KeepAwake() = default;
Win32KeepAwake::~Win32KeepAwake() = default;

void Win32KeepAwake::Take() noexcept {
  SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
  LetConsoleBeClosed(false);
  try {
    guard_ = std::make_unique<ShutdownGuard>();
  } catch (const std::exception&) {
    guard_ = nullptr;  // without memory or a thread the run goes on unguarded
  }
}

void Win32KeepAwake::Release() noexcept {
  guard_ = nullptr;
  LetConsoleBeClosed(true);
  SetThreadExecutionState(ES_CONTINUOUS);
}

}  // namespace ox
