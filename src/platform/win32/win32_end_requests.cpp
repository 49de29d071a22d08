// The calls of this host that ask a program on a console to end.
#include "platform/win32/win32_end_requests.h"

#include <atomic>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

/// The event that a call sets; the host calls on a thread of its own and hands over nothing of ours.
std::atomic<HANDLE> requestedNow{nullptr};

BOOL WINAPI Called(DWORD kind) {
  return Win32EndRequests::Request(kind) ? TRUE : FALSE;
}

}  // namespace

bool Win32EndRequests::Request(unsigned long kind) {
  const HANDLE requested = requestedNow;
  if (requested == nullptr) return false;
  SetEvent(requested);
  if (kind != CTRL_C_EVENT && kind != CTRL_BREAK_EVENT) Sleep(INFINITE);  // the end takes this thread with it
  return true;
}

Win32EndRequests::Win32EndRequests() : requested_(NewEvent()) {
  requestedNow = requested_.Get();
  // Never taken back: that would wait for a call under way, which itself waits for the end of the program.
  [[maybe_unused]] static const BOOL kTaken = SetConsoleCtrlHandler(Called, TRUE);
}

Win32EndRequests::~Win32EndRequests() {
  requestedNow = nullptr;
}

WaitHandle Win32EndRequests::Handle() const {
  return reinterpret_cast<WaitHandle>(requested_.Get());
}

}  // namespace ox
