// Yield and Rest on the toolkit's event dispatcher.
#include "desktop/event_pump.h"

#include <QCoreApplication>
#include <utility>

namespace ox {
namespace {

constexpr std::chrono::milliseconds kBetweenLooks{1};
/// Input ends a rest at once: this only bounds how late the end of a time-out is noticed.
constexpr std::chrono::milliseconds kLongestRest{50};

}  // namespace

EventPump::EventPump(const OpenPorts& ports) : ports_(ports) {
  // Not a precise one: on Windows that has a thread of its own, which asks for a thousand ticks a second.
  beat_.setTimerType(Qt::CoarseTimer);
  beat_.setInterval(kLongestRest);
  // A wait rests hundreds of times, so the timer goes on between the rests. It ends with the first beat that
  // no rest has begun before: a beat may come so early in a rest that the toolkit waits on, and the next ends
  // it.
  QObject::connect(&beat_, &QTimer::timeout, &beat_, [this] {
    if (!std::exchange(rested_, false)) beat_.stop();
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
  rested_ = true;
  if (!beat_.isActive()) beat_.start();
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
