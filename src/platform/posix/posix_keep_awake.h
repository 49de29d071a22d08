// Keeping this host awake: a lock at its login manager.
#pragma once

#include <chrono>
#include <memory>

#include "platform/keep_awake.h"
#include "platform/posix/descriptor.h"

struct sd_bus;

namespace ox {

/// Asks org.freedesktop.login1 on the system bus for a block lock on sleep, shutdown, idling and the lid
/// switch. Without a bus, without a login manager and where it refuses (remote sessions) the host stays as it
/// is.
class PosixKeepAwake : public KeepAwake {
 public:
  /// A login manager answers within some milliseconds.
  static constexpr std::chrono::milliseconds kPatience{250};

  /// A run waits so long for the answer at most; a lock that comes later counts too.
  explicit PosixKeepAwake(std::chrono::milliseconds patience = kPatience) : patience_(patience) {}

 private:
  struct CloseBus {
    void operator()(sd_bus* bus) const;
  };

  void Take() noexcept override;
  void Release() noexcept override;

  /// Open as long as the lock is asked for: what a slow login manager grants late waits in its socket, and is
  /// given back when that is closed.
  std::unique_ptr<sd_bus, CloseBus> bus_;
  std::chrono::milliseconds patience_;
  Descriptor lock_;  // the lock is given back when it is closed
};

}  // namespace ox
