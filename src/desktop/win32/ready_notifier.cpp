// Events of Windows that are set.
#include "desktop/ready_notifier.h"

#include <QWinEventNotifier>
#include <utility>

namespace ox {

/// Enabling it has a thread of the system wait for the event, which answers at once for one that is set
/// already; disabling it waits until that thread has let go of the handle.
struct ReadyNotifier::Toolkits {
  QWinEventNotifier notifier;
};

ReadyNotifier::ReadyNotifier(WaitHandle handle, std::function<void()> ready) : toolkits_(new Toolkits) {
  QWinEventNotifier& notifier = toolkits_->notifier;
  notifier.setHandle(reinterpret_cast<Qt::HANDLE>(handle));
  QObject::connect(&notifier, &QWinEventNotifier::activated, &notifier,
                   [&notifier, ready = std::move(ready)] {
                     notifier.setEnabled(false);
                     ready();
                   });
}

ReadyNotifier::~ReadyNotifier() = default;

void ReadyNotifier::SetEnabled(bool enabled) {
  toolkits_->notifier.setEnabled(enabled);
}

}  // namespace ox
