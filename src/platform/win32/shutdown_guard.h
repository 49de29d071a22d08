// A hidden window that holds off the end of the session.
#pragma once

#include <future>
#include <thread>

namespace ox {

/// Refuses, for its own life, that the session ends, and tells the user why on the screen that then appears.
/// The window has a thread of its own, since the host asks it at any time and a program on a console looks
/// for no messages. Throws std::system_error when there is no thread to be had.
class ShutdownGuard {
 public:
  ShutdownGuard();
  ShutdownGuard(const ShutdownGuard&) = delete;
  ShutdownGuard& operator=(const ShutdownGuard&) = delete;
  ~ShutdownGuard();

  /// What the window is called; nobody sees it.
  static const wchar_t* const kWindowClass;

 private:
  void Guard();

  std::promise<void*> shown_;
  std::future<void*> window_;  // its HWND; null where no window can be made
  std::thread thread_;
};

}  // namespace ox
