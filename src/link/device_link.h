// The request/reply dialogue with the device.
#pragma once

#include <functional>

#include "link/line_waits.h"
#include "link/serial_line.h"
#include "session/session_settings.h"
#include "ui/host.h"

namespace ox {

/// What the trace panel keeps: every dialogue, or the latest only.
enum class TraceMode { kRunning, kLatestOnly };

/// A window's link to the device: its line and the dialogue on it. Window and trace panel outlive it.
class DeviceLink {
 public:
  using LineHandler = std::function<void(BytesView line)>;

  DeviceLink(Host& host, const SessionSettings& settings, TextBox& trace,
             TraceMode mode = TraceMode::kRunning);

  /// Wakes the device, sends `request` as it stands and collects the reply: one line, or with `multiRecord`
  /// the lines up to and including "E" CR. Opens the port and closes it on every way out. Returns the reply
  /// lines with their CRs. On a failure the user has been told: a silent device leaves those that had come, a
  /// port that fails leaves none. `onLine` is told of each reply line as it comes.
  Bytes DeviceDialogue(const Bytes& request, bool multiRecord, const LineHandler& onLine = {});

  void ClosePort() noexcept { line_.ClosePort(); }

 private:
  /// True when the dialogue ended well. `result` grows by every line received.
  bool Converse(const Bytes& request, bool multiRecord, const LineHandler& onLine, Bytes& result);
  bool CollectLines(bool multiRecord, const LineHandler& onLine, Bytes& result);

  Host& host_;
  const SessionSettings& settings_;
  TraceMode mode_;
  SerialLine line_;
  LineWaits waits_;
};

}  // namespace ox
