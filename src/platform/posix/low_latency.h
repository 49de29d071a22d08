// Adapters collect characters for some time, 16 ms as a rule, before they hand them on; their drivers can be
// asked not to.
#pragma once

#include <linux/serial.h>

#include <functional>

namespace ox {

/// Reads (TIOCGSERIAL) or sets (TIOCSSERIAL) a driver's own settings of its line; false when it refuses or
/// has none, as a pseudo-terminal.
using DriverCall = std::function<bool(unsigned long request, serial_struct& settings)>;

/// The driver of an open terminal.
DriverCall DriverOf(int terminal);

/// Has the driver hand on every character at once, as long as this object is. Drivers that refuse go on as
/// they did, which is no error: the line is only slower.
class LowLatency {
 public:
  explicit LowLatency(DriverCall driver);
  LowLatency(const LowLatency&) = delete;
  LowLatency& operator=(const LowLatency&) = delete;
  ~LowLatency();

 private:
  DriverCall driver_;
  bool asked_ = false;  // by us, so that a flag that stood before stays
};

}  // namespace ox
