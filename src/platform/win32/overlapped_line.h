// One serial line from its opening to its closing: reading, writing, and knowing when all has been sent.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "platform/line_settings.h"
#include "platform/sending_time.h"
#include "platform/wait_handle.h"
#include "platform/win32/handle.h"
#include "platform/win32/transfer.h"

namespace ox {

/// After a PortError the line cannot be used any more. One thread does all with it and outlives it: the
/// system takes back the transfers of a thread that ends.
class OverlappedLine {
 public:
  /// Takes the device, "\\.\COM3", and sets it up; what it has received before stays to be read. Throws
  /// PortError.
  OverlappedLine(const std::wstring& path, const LineSettings& settings);
  /// What was received and not read is lost.
  ~OverlappedLine();
  OverlappedLine(const OverlappedLine&) = delete;
  OverlappedLine& operator=(const OverlappedLine&) = delete;

  /// An event, set while something has arrived or the line has hung up.
  WaitHandle Readiness() const;

  /// Has the driver send all the bytes, cut to the line's data bits; throws PortError on a hang-up and when
  /// the driver has not taken them within the time that the line needs for them, plus a grace.
  void Write(BytesView bytes);

  /// What has arrived, cut to the line's data bits; throws PortError on a hang-up, once everything has been
  /// read.
  Bytes Read();

  /// Throws PortError on a hang-up; does nothing on a line without modem lines.
  void SetDataTerminalReady(bool on);

  /// Waits until what was written has left the host; ends early on a hang-up, and late by a grace at most.
  void WaitUntilSent() noexcept;

 private:
  Bytes TakeRest();
  void FinishWriting(SendingTime::TimePoint deadline);

  Handle port_;
  LineSettings settings_;
  SendingTime sending_{settings_.CharacterTime()};
  Transfer first_{port_.Get()};  // waits for the next character
  Transfer rest_{port_.Get()};   // of what stands behind it
  Transfer leaving_{port_.Get()};
};

}  // namespace ox
