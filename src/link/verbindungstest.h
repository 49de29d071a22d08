// Verbindungstest: finds out whether a device answers, with which baud rate and parity, and what it is.
#pragma once

#include <memory>

#include "session/session_settings.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// Runs the test as soon as it is shown and closes itself. The result stands in the session settings:
/// `Connected`, `BaudRate`, `Parity`, `DeviceIdent`.
class Verbindungstest : public Window {
 public:
  Verbindungstest(Host& host, SessionSettings& settings);

  Label Label3{*this, "Label3", "Testparameter"};
  Label Label1{*this, "Label1", "Baudrate:"};
  Label Baudanz{*this, "Baudanz"};
  Label Label2{*this, "Label2", "Parität:"};
  Label Paritätanz{*this, "Paritätanz"};
  Label COM{*this, "COM"};

 protected:
  void OnActivate() override;
  void OnFailure() override;

 private:
  enum class ProbeResult { kNoAnswer = 0, kFound = 1, kPortFailure = 2 };

  void TestConnection();
  void NormaliseSettings();
  void ShowPair(const Bytes& baud, const Bytes& parity);
  /// Shows the pair, probes it and, when a device answered, makes it the session's. One attempt.
  ProbeResult Try(const Bytes& baud, const Bytes& parity);
  ProbeResult Probe(const Bytes& baud, const Bytes& parity);
  /// True when the port is open with the pair and the wake-up is sent; otherwise the user has been told.
  bool BeginProbe(const Bytes& baud, const Bytes& parity);
  ProbeResult Identify();
  bool Elapsed(float start, float seconds) const;

  Host& host_;
  SessionSettings& settings_;
  std::unique_ptr<SerialPort> port_;
};

/// Shows a fresh connection test and returns when it has ended; its result stands in the session settings.
void RunConnectionTest(Host& host, SessionSettings& settings);

}  // namespace ox
