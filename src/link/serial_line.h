// The serial line of a dialogue: its port and its trace.
#pragma once

#include <memory>

#include "link/line_trace.h"
#include "platform/machine.h"
#include "session/session_settings.h"

namespace ox {

/// The lower half of the link. Owns its port; machine, settings and trace outlive the line.
class SerialLine {
 public:
  SerialLine(Machine& machine, const SessionSettings& settings, LineTrace& trace)
      : settings_(settings), trace_(trace), port_(machine.ports.Create()) {}

  /// Sets the port to the session's line parameters and opens it unless it is open. Throws PortError.
  void OpenPort();

  /// Closes the port if it is open; never fails.
  void ClosePort() noexcept { port_->Close(); }

  /// Sends the text as it stands. Throws PortError.
  void Send(BytesView text) { port_->Output(text); }

  /// To read from, and for its modem line.
  SerialPort& Port() { return *port_; }

  /// See LineTrace.
  void WriteTrace(BytesView entry) { trace_.Write(entry); }

 private:
  const SessionSettings& settings_;
  LineTrace& trace_;
  std::unique_ptr<SerialPort> port_;
};

}  // namespace ox
