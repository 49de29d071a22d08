// The toolkit's notifier for what the host says is ready.
#pragma once

#include <QSocketNotifier>
#include <functional>
#include <utility>

#include "platform/wait_handle.h"

namespace ox {

/// Ends a wait for events when the handle is ready. The only place that knows what the toolkit makes of a
/// host's handle: here a descriptor that can be read.
class ReadyNotifier {
 public:
  /// Disabled at first. The owner of the handle may close it while the notifier is disabled.
  explicit ReadyNotifier(
      WaitHandle handle, std::function<void()> ready = [] {})
      : notifier_(handle, QSocketNotifier::Read) {
    notifier_.setEnabled(false);
    // Once only: what is ready may stay so for long, and an event loop that nobody leaves would spin.
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this, ready = std::move(ready)] {
      notifier_.setEnabled(false);
      ready();
    });
  }

  /// An enabled notifier calls `ready` from the event loop once the handle is ready, and is disabled then.
  void SetEnabled(bool enabled) { notifier_.setEnabled(enabled); }

 private:
  QSocketNotifier notifier_;
};

}  // namespace ox
