// Battery and charger of a generation III device, as its status line tells them.
#pragma once

#include <array>
#include <optional>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// The charger's states with the codes of the status line.
enum class ChargerState {
  kDischarging = 1,
  kChargeBlocked,
  kAwaitingTemperature,
  kInitialCharge,
  kFastCharge,
  kTimedCharge,
  kOvercharge,
  kChargeFinished,
  kBatteryCheck,
  kChargePrevented,
};

/// The six figures of the status line in its own units.
struct PowerStatus {
  int charge = 0;          ///< tenths of a percent
  int capacity = 0;        ///< tenths of a percent
  int mainsVoltage = 0;    ///< millivolts
  int batteryVoltage = 0;  ///< millivolts
  int temperature = 0;     ///< degrees Celsius plus 100
  int state = 0;           ///< a ChargerState, or any other code of a faulty device
};

/// The status as 24 hexadecimal digits, six fields of four; negative figures as their 16-bit complement.
Bytes FormatPowerStatus(const PowerStatus& status);

/// A battery that runs through all charger states in some twelve minutes, over and over.
class PowerSupply {
 public:
  /// Goes on to the time given; an earlier time changes nothing.
  void Advance(Seconds now);
  /// Sets the charge, 0 to 100 percent; the charger goes on from there as it would with such a battery.
  void Preset(int percent);
  PowerStatus Status() const;

 private:
  void Enter(size_t phase);
  void Live(Seconds span);

  std::optional<Seconds> now_;
  size_t phase_ = 0;
  Seconds inPhase_ = 0;
  double charge_ = 791;
  double capacity_ = 950;
  double temperature_ = 23;
};

}  // namespace ox::sim
