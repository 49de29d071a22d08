// Descriptors that can be read.
#include "desktop/ready_notifier.h"

#include <QSocketNotifier>
#include <utility>

namespace ox {

struct ReadyNotifier::Toolkits {
  QSocketNotifier notifier;
};

ReadyNotifier::ReadyNotifier(WaitHandle handle, std::function<void()> ready)
    : toolkits_(new Toolkits{QSocketNotifier(handle, QSocketNotifier::Read)}) {
  QSocketNotifier& notifier = toolkits_->notifier;
  notifier.setEnabled(false);
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&notifier, ready = std::move(ready)] {
    notifier.setEnabled(false);
    ready();
  });
}

ReadyNotifier::~ReadyNotifier() = default;

void ReadyNotifier::SetEnabled(bool enabled) {
  toolkits_->notifier.setEnabled(enabled);
}

}  // namespace ox
