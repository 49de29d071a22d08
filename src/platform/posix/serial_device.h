// A serial device of this host, taken for this program alone.
#pragma once

#include <string>

#include "platform/posix/descriptor.h"

namespace ox {

/// Holds the device from construction to destruction. Reads and writes on its descriptor never block.
class SerialDevice {
 public:
  /// Opens the device that the path leads to; throws PortError with the reason in German: not there, no
  /// rights (with the group that has them), taken, no serial line.
  explicit SerialDevice(const std::string& path);
  SerialDevice(const SerialDevice&) = delete;
  SerialDevice& operator=(const SerialDevice&) = delete;
  ~SerialDevice();

  int Number() const { return descriptor_.Number(); }

 private:
  Descriptor descriptor_;
};

}  // namespace ox
