// PowerMonitor: battery and charger of a generation III device, once a second, with a log.
#pragma once

#include <optional>

#include "link/device_link.h"
#include "power/power_history.h"
#include "power/power_log.h"
#include "power/power_request.h"
#include "power/power_status.h"
#include "session/session_settings.h"
#include "ui/control_lock.h"
#include "ui/controls.h"
#include "ui/curve.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// Monitors between "Start" and "Stopp", as long as the device answers and the log can be written. Closing
/// the window ends the monitoring first.
class PowerMonitor : public Window {
 public:
  PowerMonitor(Host& host, const SessionSettings& settings);

  Button MonitorStart{*this, "MonitorStart", "Start"};
  Button MonitorStop{*this, "MonitorStop", "Stopp"};
  Button Verlassen{*this, "Verlassen", "Verlassen"};
  Label LabelBatteryCapacity{*this, "LabelBatteryCapacity", "Akkuladung"};
  Label BatteryCapacity{*this, "BatteryCapacity"};
  Label LabelBatteryCheckCapacity{*this, "LabelBatteryCheckCapacity", "Akkukapazitaet"};
  Label BatteryCheckCapacity{*this, "BatteryCheckCapacity"};
  Label LabelBatteryVoltage{*this, "LabelBatteryVoltage", "Akkuspannung"};
  Label BatteryVoltage{*this, "BatteryVoltage"};
  Label LabelOperationVoltage{*this, "LabelOperationVoltage", "Netzteilspannung"};
  Label OperationVoltage{*this, "OperationVoltage"};
  Label LabelTemperature{*this, "LabelTemperature", "Temperatur"};
  Label Temperature{*this, "Temperature"};
  Label LabelChargeControllerState{*this, "LabelChargeControllerState", "Ladebetrieb"};
  Label ChargeControllerState{*this, "ChargeControllerState"};
  TextBox TPreset{*this, "TPreset"};
  Label LabelTPreset{*this, "LabelTPreset", "%"};
  Button CPreset{*this, "CPreset", "Akkuladung simulieren"};
  Label LabelDatanz{*this, "LabelDatanz", "PC <> OX  Ausgetauschte Daten"};
  TextBox datanz{*this, "datanz"};
  Curve Verlauf{*this, "Verlauf"};  // since "Start"
  QuietLine Hinweis;
  Timer PowerTimer{*this, "PowerTimer", kSampleMilliseconds};

 protected:
  void OnLoad() override;
  void OnClose() override;
  void OnFailure() override;

 private:
  static constexpr int kSampleMilliseconds = 1000;

  void StartMonitoring();
  /// Back to the idle state, the log closed; does nothing in the idle state.
  void StopMonitoring();
  /// The log cannot be written: stops, then tells why.
  void StopFor(std::string_view failure);
  void ShowIdle();
  /// One tick: stops when that was asked for, else takes a sample.
  void TakeTurn();
  void Sample();
  /// Shows the status and logs it when that is due. `data` is the reply behind its framing character.
  void DecodePowerStatus(BytesView data);
  /// Adds the status, or that there was none, to the curve.
  void Record(const std::optional<PowerStatus>& status);
  void ShowTexts(const PowerStatusTexts& texts);

  Host& host_;
  ControlLock whileIdle_{&MonitorStart, &Verlassen};
  DeviceLink Due_;
  PowerLog log_;
  PowerHistory history_;
  LogRule logRule_;
  int PresetCharge_ = kNoPreset;
  bool StopRequested_ = false;
  bool inTurn_ = false;  // a tick is under way, perhaps waiting for the device
};

}  // namespace ox
