// Keeping this host awake: a mark at its power manager, and a window that refuses the end of the session.
#pragma once

#include <memory>

#include "platform/keep_awake.h"

namespace ox {

class ShutdownGuard;

/// The host does not fall asleep by itself and does not shut down without asking its user again. A lid that
/// is closed and the power key it obeys all the same: no program can hold them.
class Win32KeepAwake : public KeepAwake {
 public:
  Win32KeepAwake();
  ~Win32KeepAwake() override;

 private:
  void Take() noexcept override;
  void Release() noexcept override;

  std::unique_ptr<ShutdownGuard> guard_;  // during a run
};

}  // namespace ox
