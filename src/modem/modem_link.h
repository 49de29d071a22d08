// The dialogue with a modem: shorter than the device's, on a port that stays open.
#pragma once

#include "link/line_waits.h"
#include "link/serial_line.h"
#include "link/trace_panel.h"
#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"

namespace ox {

/// A window's link to the modem. Window and trace panel outlive it. A port that failed is closed, and opened
/// again by the next operation.
class ModemLink {
 public:
  ModemLink(Host& host, const SessionSettings& settings, TextBox& trace);

  /// Opens the port unless it is open; false, after the user has been told, when that failed.
  bool OpenPort();
  void ClosePort() noexcept { line_.ClosePort(); }

  /// Wakes the modem, sends `request` as it stands and returns the first answer that is not "N", as the port
  /// delivered it. Empty when the modem ended the dialogue ("R", "NR"), after Stop, and on a failure, of
  /// which the user has been told.
  Bytes ModemDialogue(const Bytes& request);

  /// Has the modem send by a pause of its modem line, and traces what it says until it falls silent.
  void CallForData();

  /// Ends, at its next step, an operation that would go on as long as the modem talks. In force until Resume.
  void Stop() { stopped_ = true; }
  void Resume() { stopped_ = false; }

 private:
  bool WakeModem();
  /// The answer to a request that was sent.
  Bytes AwaitAnswer();
  void PauseModemLine();
  void TraceInput();
  /// Closes the port, so that the next operation tries it anew, and tells the user.
  void ReportPortFailure();

  Host& host_;
  const SessionSettings& settings_;
  TracePanel panel_;
  SerialLine line_;
  LineWaits waits_;
  bool stopped_ = false;
};

}  // namespace ox
