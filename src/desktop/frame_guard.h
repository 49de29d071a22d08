// Keeps the system from holding up a device that is being written.
#pragma once

#include <functional>
#include <memory>

namespace ox {

/// On Windows, whoever holds a title bar or an edge of a window with the mouse, or has its system menu open,
/// keeps the program's only thread: nothing goes on until he lets go. A window can therefore be neither moved
/// nor resized by its frame while `busy` says so. Its buttons work, and on other systems nothing is guarded.
/// Needs a QApplication, and lives shorter than it.
class FrameGuard {
 public:
  explicit FrameGuard(const std::function<bool()>& busy);
  FrameGuard(const FrameGuard&) = delete;
  FrameGuard& operator=(const FrameGuard&) = delete;
  ~FrameGuard();

 private:
  struct Filter;
  std::unique_ptr<Filter> filter_;
};

}  // namespace ox
