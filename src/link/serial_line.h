// The serial line of a window: its port and its trace panel.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"

namespace ox {

/// How the trace names the two directions. UTF-8.
struct TraceLabels {
  std::string_view sent;
  std::string_view received;
};
constexpr TraceLabels kDeviceTrace{"PC -> OX", "PC <- OX"};
constexpr TraceLabels kModemTrace{"PC -> Modem", "PC <- Modem"};

/// The lower half of the link. Owns its port; the trace panel is the window's and outlives the line.
class SerialLine {
 public:
  SerialLine(Host& host, const SessionSettings& settings, TextBox& trace, TraceLabels labels);

  /// Sets the port to the session's line parameters and opens it unless it is open. Throws PortError.
  void OpenPort();

  /// Closes the port if it is open; never fails.
  void ClosePort() noexcept;

  /// Sends the text as it stands. Throws PortError.
  void Send(BytesView text) { port_->Output(text); }

  /// To read from, and for its modem line.
  SerialPort& Port() { return *port_; }

  /// Adds a line to the trace and lets it be painted. The first character of `entry` is "T" for sent, any
  /// other for received; the rest went over the line. A final CR is shown as "<CR>". The newest 256 KB of the
  /// trace stay whatever comes; what is older goes.
  void WriteTrace(BytesView entry);

  void ClearTrace() { trace_.SetText(""); }

 private:
  Host& host_;
  const SessionSettings& settings_;
  TextBox& trace_;
  TraceLabels labels_;
  std::unique_ptr<SerialPort> port_;
};

}  // namespace ox
