// A serial device of this host, taken for this program alone.
#pragma once

#include <string>

#include "platform/posix/descriptor.h"

namespace ox {

/// Holds the device from construction to destruction. Reads and writes on its descriptor never block.
class SerialDevice {
 public:
  /// Opens the device that the path leads to; throws what OpeningFault says.
  explicit SerialDevice(const std::string& path);
  SerialDevice(const SerialDevice&) = delete;
  SerialDevice& operator=(const SerialDevice&) = delete;
  ~SerialDevice();

  int Number() const { return descriptor_.Number(); }

 private:
  Descriptor descriptor_;
  bool marked_ = false;  // with the exclusive mark, which keeps out programs that heed no lock
};

}  // namespace ox
