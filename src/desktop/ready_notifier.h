// The toolkit's notifier for what the host says is ready.
#pragma once

#include <functional>
#include <memory>

#include "platform/wait_handle.h"

namespace ox {

/// Ends a wait for events when the handle is ready. The only place that knows what the toolkit makes of a
/// host's handle, in one file for each kind: `xdg/` has descriptors that can be read, `win32/` events that
/// are set.
class ReadyNotifier {
 public:
  /// Disabled at first. The owner of the handle may close it while the notifier is disabled.
  explicit ReadyNotifier(
      WaitHandle handle, std::function<void()> ready = [] {});
  ReadyNotifier(const ReadyNotifier&) = delete;
  ReadyNotifier& operator=(const ReadyNotifier&) = delete;
  ~ReadyNotifier();

  /// An enabled notifier calls `ready` from the event loop once the handle is ready, at once where it is so
  /// already, and is disabled then: what is ready may stay so for long, and an event loop that nobody leaves
  /// would spin.
  void SetEnabled(bool enabled);

 private:
  struct Toolkits;
  std::unique_ptr<Toolkits> toolkits_;
};

}  // namespace ox
