// The controls that a window locks while it works.
#pragma once

#include <initializer_list>
#include <vector>

#include "ui/controls.h"

namespace ox {

class ControlLock {
 public:
  /// The controls outlive the lock.
  ControlLock(std::initializer_list<Control*> controls) : controls_(controls) {}

  void Lock() { SetEnabled(false); }
  void Unlock() { SetEnabled(true); }

 private:
  void SetEnabled(bool enabled) {
    for (Control* control : controls_) control->SetEnabled(enabled);
  }

  std::vector<Control*> controls_;
};

}  // namespace ox
