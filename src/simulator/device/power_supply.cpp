// The battery's cycle: phases that end after a time or at a charge.
#include "simulator/device/power_supply.h"

#include <algorithm>
#include <cmath>

namespace ox::sim {
namespace {

constexpr double kFull = 1000;  // tenths of a percent

struct Phase {
  ChargerState state;
  Seconds longest;
  double rate;         // tenths of a percent a second
  double until;        // the charge that ends the phase, where it has a rate
  double temperature;  // what the battery comes nearer to, in degrees Celsius
};

constexpr std::array<Phase, 10> kCycle{{
    {ChargerState::kDischarging, 240, -4, 200, 31},
    {ChargerState::kChargeBlocked, 15, 0, 0, 34},
    {ChargerState::kAwaitingTemperature, 25, 0, 0, 18},
    {ChargerState::kInitialCharge, 60, 2, 300, 22},
    {ChargerState::kFastCharge, 200, 4, 900, 38},
    {ChargerState::kTimedCharge, 110, 1, kFull, 33},
    {ChargerState::kOvercharge, 15, 0, 0, 36},
    {ChargerState::kChargeFinished, 45, 0, 0, 22},
    {ChargerState::kBatteryCheck, 30, -0.5, 985, 24},
    {ChargerState::kChargePrevented, 15, 0, 0, 21},
}};

constexpr Seconds kTemperatureLag = 60;
constexpr double kCapacityLossPerCheck = 1;
constexpr double kCapacityOfAWornBattery = 700;
constexpr double kCapacityOfANewBattery = 980;

constexpr double kMainsMillivolts = 12345;
constexpr double kSagPerRate = 25;  // millivolts for each tenth of a percent a second
constexpr double kEmptyMillivolts = 5400;
constexpr double kMillivoltsPerTenth = 1.8;
constexpr double kChargingRise = 220;  // millivolts above the resting battery
constexpr int kTemperatureOffset = 100;

size_t PhaseOf(ChargerState state) {
  const auto* found =
      std::find_if(kCycle.begin(), kCycle.end(), [state](const Phase& p) { return p.state == state; });
  return static_cast<size_t>(found - kCycle.begin());
}

Bytes HexField(int value) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr int kShifts[] = {12, 8, 4, 0};
  Bytes field;
  for (const int shift : kShifts) field += kDigits[(static_cast<unsigned>(value) >> shift) & 0xFU];
  return field;
}

}  // namespace

Bytes FormatPowerStatus(const PowerStatus& status) {
  return HexField(status.charge) + HexField(status.capacity) + HexField(status.mainsVoltage) +
         HexField(status.batteryVoltage) + HexField(status.temperature) + HexField(status.state);
}

void PowerSupply::Advance(Seconds now) {
  Seconds left = std::max(0.0, now - now_.value_or(now));
  now_ = std::max(now, now_.value_or(now));
  while (left > 0) {
    const Phase& phase = kCycle[phase_];
    Seconds span = std::max(0.0, phase.longest - inPhase_);
    if (phase.rate != 0) span = std::min(span, std::max(0.0, (phase.until - charge_) / phase.rate));
    if (span > left) {
      Live(left);
      return;
    }
    Live(span);
    left -= span;
    Enter((phase_ + 1) % kCycle.size());
  }
}

void PowerSupply::Live(Seconds span) {
  const Phase& phase = kCycle[phase_];
  inPhase_ += span;
  charge_ = std::clamp(charge_ + phase.rate * span, 0.0, kFull);
  temperature_ += (phase.temperature - temperature_) * (1 - std::exp(-span / kTemperatureLag));
}

void PowerSupply::Enter(size_t phase) {
  phase_ = phase;
  inPhase_ = 0;
  if (kCycle[phase].state != ChargerState::kBatteryCheck) return;
  capacity_ -= kCapacityLossPerCheck;
  if (capacity_ < kCapacityOfAWornBattery) capacity_ = kCapacityOfANewBattery;
}

void PowerSupply::Preset(int percent) {
  charge_ = std::clamp(percent * 10.0, 0.0, kFull);
  const auto chargesUpTo = [](ChargerState state) { return kCycle[PhaseOf(state)].until; };
  if (charge_ < chargesUpTo(ChargerState::kInitialCharge)) {
    Enter(PhaseOf(ChargerState::kInitialCharge));
  } else if (charge_ < chargesUpTo(ChargerState::kFastCharge)) {
    Enter(PhaseOf(ChargerState::kFastCharge));
  } else if (charge_ < kFull) {
    Enter(PhaseOf(ChargerState::kTimedCharge));
  } else {
    Enter(PhaseOf(ChargerState::kChargeFinished));
  }
}

PowerStatus PowerSupply::Status() const {
  const Phase& phase = kCycle[phase_];
  const bool onMains = phase.state != ChargerState::kDischarging;
  const double resting = kEmptyMillivolts + charge_ * kMillivoltsPerTenth;
  // The mains voltage sags with the charging current, so that the figure moves as a real one does.
  const double mains = kMainsMillivolts - std::abs(phase.rate) * kSagPerRate - temperature_;
  PowerStatus status;
  status.charge = static_cast<int>(std::lround(charge_));
  status.capacity = static_cast<int>(std::lround(capacity_));
  status.mainsVoltage = onMains ? static_cast<int>(std::lround(mains)) : 0;
  status.batteryVoltage = static_cast<int>(std::lround(resting + (phase.rate > 0 ? kChargingRise : 0)));
  status.temperature = static_cast<int>(std::lround(temperature_)) + kTemperatureOffset;
  status.state = static_cast<int>(phase.state);
  return status;
}

}  // namespace ox::sim
