// Modem: sends test records to a modem and shows its answers.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "modem/modem_checks.h"
#include "modem/modem_link.h"
#include "session/session_settings.h"
#include "ui/control_lock.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// The port stays open as long as the window. While a command runs its buttons are disabled, all but the one
/// that leaves.
class Modem : public Window {
 public:
  Modem(Host& host, const SessionSettings& settings);

  Label LabelTAKZ{*this, "LabelTAKZ", "AKZ"};
  TextBox TAKZ{*this, "TAKZ"};
  Label LabelTDAT{*this, "LabelTDAT", "Datum"};
  TextBox TDAT{*this, "TDAT"};
  Label LabelTUHR{*this, "LabelTUHR", "Uhrzeit"};
  TextBox TUHR{*this, "TUHR"};
  Button Command2{*this, "Command2", "AKZ/Datum/Uhrzeit -> Modem"};
  Label LabelTMST{*this, "LabelTMST", "MST-Nr."};
  TextBox TMST{*this, "TMST"};
  Label LabelTPAR{*this, "LabelTPAR", "Parameter"};
  TextBox TPAR{*this, "TPAR"};
  Label LabelTBEW{*this, "LabelTBEW", "Bewertungszeichen"};
  TextBox TBEW{*this, "TBEW"};
  Label LabelTMEW{*this, "LabelTMEW", "Messwert"};
  TextBox TMEW{*this, "TMEW"};
  Button Command3{*this, "Command3", "Messwert -> Modem"};
  Button Command4{*this, "Command4", "Sendebefehl"};
  Button Command5{*this, "Command5", "Script senden"};  // does nothing yet
  Button Command1{*this, "Command1", "Verlassen"};
  Label LabelDatanz{*this, "LabelDatanz", "PC <> Modem  Ausgetauschte Daten"};
  TextBox Datanz{*this, "Datanz"};
  QuietLine Hinweis;

 protected:
  void OnLoad() override;
  void OnCloseWhileRunning() override;
  void OnUnload() override;
  void OnFailure() override;

 private:
  /// Disables the commands while the modem is spoken to.
  void WithModem(const std::function<void()>& work);
  void SendDate();
  void SendMeasuredValue();
  /// Checks the fields of a measured value, one after the other, and normalises them on the way; false when
  /// one of them is wrong.
  bool PrepareMeasuredValue();
  /// Tells the user of a finding about the field; false when it is an error.
  bool Passes(const std::optional<Finding>& finding, TextBox& field);
  void SendRequest(const Bytes& request);

  Host& host_;
  ModemLink link_;
  ControlLock commands_{&Command2, &Command3, &Command4, &Command5};
};

}  // namespace ox
