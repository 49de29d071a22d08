// Yield and Rest on the toolkit's event dispatcher.
#include "desktop/event_pump.h"

#include <QCoreApplication>

namespace ox {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{1};
/// Input ends a rest at once: this only bounds how late the end of a time-out is noticed.
constexpr std::chrono::milliseconds kLongestRest{50};

}  // namespace

EventPump::EventPump(const OpenPorts& ports) : ports_(ports) {
  beat_.setTimerType(Qt::PreciseTimer);
  beat_.setInterval(kLongestRest);
  // A wait rests hundreds of times: the beat is not started and stopped for each of them.
  QObject::connect(&beat_, &QTimer::timeout, &beat_, [this] {
    if (resting_ == 0) beat_.stop();
  });
}

void EventPump::Yield() {
  if (SteadyClock::now() - lastLook_ < kBetweenLooks) return;
  QCoreApplication::processEvents();
  lastLook_ = SteadyClock::now();
}

void EventPump::Rest() {
  WatchPorts();
  SetWatching(true);
  if (!beat_.isActive()) beat_.start();
  ++resting_;
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  --resting_;
  SetWatching(false);
  lastLook_ = SteadyClock::now();
}

void EventPump::WatchPorts() {
  if (watched_ == ports_.Descriptors()) return;
  watched_ = ports_.Descriptors();
  notifiers_.clear();
  for (const int descriptor : watched_) {
    auto notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    notifier->setEnabled(false);
    // A message box may open before anybody reads the port, and must not find the notifier ringing for ever.
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(),
                     [ringing = notifier.get()] { ringing->setEnabled(false); });
    notifiers_.push_back(std::move(notifier));
  }
}

void EventPump::SetWatching(bool on) {
  for (const auto& notifier : notifiers_) notifier->setEnabled(on);
}

}  // namespace ox
