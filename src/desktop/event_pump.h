// Hands the toolkit its events while a command of the program runs.
#pragma once

#include <QTimer>
#include <chrono>
#include <memory>
#include <vector>

#include "desktop/ready_notifier.h"
#include "platform/open_ports.h"

namespace ox {

class EventPump {
 public:
  /// The ports outlive the pump.
  explicit EventPump(const OpenPorts& ports);

  /// Handles what is pending. It is called once for every character received, so it looks for events only
  /// when the last look is a while ago.
  void Yield();

  /// Handles what is pending; with nothing pending it waits until an open port can be read, an event comes or
  /// some hundredths of a second have passed.
  void Rest();

 private:
  using SteadyClock = std::chrono::steady_clock;

  /// Watches the ports that are open now.
  void WatchPorts();
  void SetWatching(bool on);

  const OpenPorts& ports_;
  std::vector<WaitHandle> watched_;
  std::vector<std::unique_ptr<ReadyNotifier>> notifiers_;  // enabled only while resting
  QTimer beat_;          // ends rests; beats on between rests that follow each other
  bool rested_ = false;  // since the last beat
  SteadyClock::time_point lastLook_;
};

}  // namespace ox
