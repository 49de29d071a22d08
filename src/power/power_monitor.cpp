// What the power monitor does at each tick.
#include "power/power_monitor.h"

#include <optional>

#include "ui/saving.h"

namespace ox {
namespace {

constexpr FileKind kPicture{"Bild", "png"};

constexpr std::string_view kLogNotOpened = "Fehler beim Öffnen von PowerManagementLog.txt !";
constexpr std::string_view kLogNotWritten = "Fehler beim Schreiben von PowerManagementLog.txt !";

/// Marks a turn as under way as long as this object lives.
class TurnMark {
 public:
  explicit TurnMark(bool& inTurn) : inTurn_(inTurn) { inTurn_ = true; }
  TurnMark(const TurnMark&) = delete;
  TurnMark& operator=(const TurnMark&) = delete;
  ~TurnMark() { inTurn_ = false; }

 private:
  bool& inTurn_;
};

}  // namespace

PowerMonitor::PowerMonitor(Host& host, const SessionSettings& settings)
    : Window(host.windows, "PowerMonitor", "Stromversorgungsmonitor der Orvanexe"),
      Hinweis(*this, host.notices),
      host_(host),
      Due_(host, settings, datanz, TraceMode::kLatestOnly),
      log_(host.files) {
  MonitorStart.onClick = [this] { StartMonitoring(); };
  MonitorStop.onClick = [this] { StopRequested_ = true; };
  Verlassen.onClick = [this] { Unload(); };
  CPreset.onClick = [this] { PresetCharge_ = ReadPreset(TPreset.Text()); };
  Verlauf.Show(history_.Data());
  Verlauf.LetSave([this](const Bytes& picture) {
    OfferToSave(host_, *this, "Stromversorgung_" + TimeInName(host_.clock.Now()), {{kPicture, picture}});
  });
  PowerTimer.onTick = [this] { TakeTurn(); };
}

void PowerMonitor::OnLoad() {
  ShowIdle();
  PresetCharge_ = kNoPreset;
}

void PowerMonitor::OnClose() {
  StopMonitoring();
  Unload();
}

void PowerMonitor::OnFailure() {
  // When a nested handler fails, the turn under way goes on to its end, and the next one stops the
  // monitoring.
  StopRequested_ = true;
  if (!inTurn_) StopMonitoring();
}

void PowerMonitor::StartMonitoring() {
  whileIdle_.Lock();
  MonitorStop.SetEnabled(true);
  StopRequested_ = false;
  logRule_.Restart(host_.clock.SecondsSinceMidnight());
  if (!log_.Open()) return StopFor(kLogNotOpened);
  if (!log_.WriteHeader()) return StopFor(kLogNotWritten);
  history_.Restart(host_.clock.Now(), host_.clock.SecondsSinceMidnight());
  Verlauf.Show(history_.Data());
  PowerTimer.SetEnabled(true);
}

void PowerMonitor::StopMonitoring() {
  ShowIdle();
  log_.Close();
}

void PowerMonitor::StopFor(std::string_view failure) {
  StopMonitoring();
  host_.windows.ShowMessage(failure);
}

void PowerMonitor::ShowIdle() {
  PowerTimer.SetEnabled(false);
  MonitorStop.SetEnabled(false);
  whileIdle_.Unlock();
}

void PowerMonitor::TakeTurn() {
  // A turn can last longer than the timer's interval: the device answers slowly, or a message waits for the
  // user.
  if (inTurn_) return;
  const TurnMark mark(inTurn_);
  if (StopRequested_) {
    StopMonitoring();
  } else {
    Sample();
  }
}

void PowerMonitor::Sample() {
  // A preset that the user sets during this request belongs to the next one.
  const Bytes request = BuildStatusRequest(PresetCharge_);
  if (IsPreset(PresetCharge_)) PresetCharge_ = kNoPreset;
  const Bytes reply = Due_.DeviceDialogue(request, false);
  if (reply.empty()) {
    StopMonitoring();
    return;
  }
  // "Stopp" during the dialogue takes effect with the next tick: this reply still counts.
  DecodePowerStatus(BytesView(reply).substr(1));
}

void PowerMonitor::DecodePowerStatus(BytesView data) {
  const std::optional<PowerStatus> status = ReadPowerStatus(data);
  Record(status);
  if (!status) {
    ShowTexts({});
    return;
  }
  const PowerStatusTexts texts = FormatPowerStatus(*status);
  ShowTexts(texts);
  if (!logRule_.TakeIfDue(status->state, host_.clock.SecondsSinceMidnight())) return;
  if (!log_.Write(LogLine(host_.clock.Now(), texts))) StopFor(kLogNotWritten);
}

void PowerMonitor::Record(const std::optional<PowerStatus>& status) {
  if (!status) return history_.Miss();
  history_.Add(*status, host_.clock.SecondsSinceMidnight());
  Verlauf.Show(history_.Data());
}

void PowerMonitor::ShowTexts(const PowerStatusTexts& texts) {
  BatteryCapacity.SetText(texts.charge);
  BatteryCheckCapacity.SetText(texts.capacity);
  OperationVoltage.SetText(texts.mainsVoltage);
  BatteryVoltage.SetText(texts.batteryVoltage);
  Temperature.SetText(texts.temperature);
  ChargeControllerState.SetText(texts.state);
}

}  // namespace ox
