// The battery's cycle in virtual time.
#include "simulator/power_supply.h"

#include <gtest/gtest.h>

#include <set>

namespace ox::sim {
namespace {

TEST(PowerSupply, RunsThroughAllStatesInAQuarterOfAnHour) {
  PowerSupply supply;
  std::set<int> states;
  int before = supply.Status().charge;
  for (int second = 0; second < 900; ++second) {
    supply.Advance(second);
    const PowerStatus status = supply.Status();
    states.insert(status.state);
    EXPECT_LE(std::abs(status.charge - before), 4) << "at second " << second;
    EXPECT_EQ(status.mainsVoltage == 0, status.state == static_cast<int>(ChargerState::kDischarging));
    EXPECT_GE(status.batteryVoltage, 5000);
    EXPECT_LE(status.batteryVoltage, 8000);
    before = status.charge;
  }
  EXPECT_EQ(states, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(PowerSupply, ALongSilenceLeavesItWhereEverySecondWould) {
  PowerSupply often;
  PowerSupply once;
  once.Advance(0);
  for (int second = 0; second <= 5000; ++second) often.Advance(second);
  once.Advance(5000);
  EXPECT_EQ(FormatPowerStatus(once.Status()), FormatPowerStatus(often.Status()));
  once.Advance(10);
  EXPECT_EQ(FormatPowerStatus(once.Status()), FormatPowerStatus(often.Status())) << "time does not fall back";
}

TEST(PowerSupply, GoesOnFromAPreset) {
  const std::pair<int, ChargerState> cases[] = {{10, ChargerState::kInitialCharge},
                                                {50, ChargerState::kFastCharge},
                                                {95, ChargerState::kTimedCharge},
                                                {100, ChargerState::kChargeFinished}};
  for (const auto& [percent, state] : cases) {
    PowerSupply supply;
    supply.Advance(0);
    supply.Preset(percent);
    EXPECT_EQ(supply.Status().charge, percent * 10);
    EXPECT_EQ(supply.Status().state, static_cast<int>(state));
    supply.Advance(20);
    EXPECT_EQ(supply.Status().charge > percent * 10, percent < 100);
  }
}

TEST(PowerSupply, WritesFieldsOfFourDigits) {
  EXPECT_EQ(FormatPowerStatus({791, 950, 12345, 850, 123, 5}), "031703B630390352007B0005");
  EXPECT_EQ(FormatPowerStatus({-1, -1000, 0, 32767, -32768, 11}), "FFFFFC1800007FFF8000000B");
}

}  // namespace
}  // namespace ox::sim
