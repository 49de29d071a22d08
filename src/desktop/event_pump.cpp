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
  beat_.setSingleShot(true);
}

void EventPump::Yield() {
  if (SteadyClock::now() - lastLook_ < kBetweenLooks) return;
  QCoreApplication::processEvents();
  lastLook_ = SteadyClock::now();
}

void EventPump::Rest() {
  WatchPorts();
  SetWatching(true);
  if (!beat_.isActive()) beat_.start();  // a wait rests hundreds of times: one start serves many of them
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  SetWatching(false);
  lastLook_ = SteadyClock::now();
}

void EventPump::WatchPorts() {
  if (watched_ == ports_.Handles()) return;
  watched_ = ports_.Handles();
  notifiers_.clear();
  for (const WaitHandle handle : watched_) {
    notifiers_.push_back(std::make_unique<ReadyNotifier>(handle));
  }
}

void EventPump::SetWatching(bool on) {
  for (const auto& notifier : notifiers_) notifier->SetEnabled(on);
}

}  // namespace ox
