// The window's thread and what it answers.
#include "platform/win32/shutdown_guard.h"

#include <chrono>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

/// How long a run waits for the window. It takes some milliseconds; a later one counts too.
constexpr std::chrono::milliseconds kPatience{250};
constexpr const wchar_t* kTitle = L"Orvanexe Service";
constexpr const wchar_t* kWhy = L"Ein Gerät wird programmiert";

LRESULT CALLBACK Answer(HWND window, UINT message, WPARAM word, LPARAM more) {
  if (message == WM_QUERYENDSESSION) return FALSE;
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, word, more);
}

HWND MakeWindow() {
  const HINSTANCE program = GetModuleHandleW(nullptr);
  WNDCLASSW kind{};
  kind.lpfnWndProc = Answer;
  kind.hInstance = program;
  kind.lpszClassName = ShutdownGuard::kWindowClass;
  RegisterClassW(&kind);  // fails from the second time on
  return CreateWindowExW(0, kind.lpszClassName, kTitle, 0, 0, 0, 0, 0, nullptr, nullptr, program, nullptr);
}

}  // namespace

const wchar_t* const ShutdownGuard::kWindowClass = L"OrvanexeShutdownGuard";

ShutdownGuard::ShutdownGuard() : window_(shown_.get_future()), thread_([this] { Guard(); }) {
  window_.wait_for(kPatience);
}

ShutdownGuard::~ShutdownGuard() {
  if (auto* const window = static_cast<HWND>(window_.get())) PostMessageW(window, WM_CLOSE, 0, 0);
  thread_.join();
}

void ShutdownGuard::Guard() {
  const HWND window = MakeWindow();
  if (window != nullptr) ShutdownBlockReasonCreate(window, kWhy);
  shown_.set_value(window);
  MSG message{};
  while (window != nullptr && GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
}

}  // namespace ox
