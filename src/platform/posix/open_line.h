// One serial line from its opening to its closing: reading, writing, and knowing when all has been sent.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "platform/line_settings.h"
#include "platform/posix/low_latency.h"
#include "platform/posix/serial_device.h"
#include "platform/sending_time.h"

namespace ox {

/// After a PortError the line cannot be used any more.
class OpenLine {
 public:
  /// Takes the device and sets it up; what it has received before stays to be read. Throws PortError.
  OpenLine(const std::string& path, const LineSettings& settings);

  int Number() const { return device_.Number(); }

  /// Writes all the bytes, cut to the line's data bits; throws PortError on a hang-up and when the host has
  /// not taken them within the time that the line needs for them, plus a grace.
  void Write(BytesView bytes);

  /// What has arrived, cut to the line's data bits; throws PortError on a hang-up, once everything has been
  /// read.
  Bytes Read();

  /// Throws PortError on a hang-up; does nothing on a line without modem lines.
  void SetDataTerminalReady(bool on);

  /// Waits until what was written has left the host; ends early on a hang-up, and late by a grace at most.
  void WaitUntilSent() noexcept;

 private:
  SerialDevice device_;
  LowLatency lowLatency_{DriverOf(Number())};
  LineSettings settings_;
  SendingTime sending_{settings_.CharacterTime()};
};

}  // namespace ox
