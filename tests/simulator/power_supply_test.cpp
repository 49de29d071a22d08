// The battery's cycle in virtual time.
#include "simulator/power_supply.h"

#include <gtest/gtest.h>

#include <set>

namespace ox::sim {

TEST(PowerSupply, LivesThroughAllStatesHoweverOftenItIsAsked) {
  PowerSupply often;
  PowerSupply once;
  once.Advance(0);
  std::set<int> states;
  for (int second = 0; second <= 900; ++second) {
    const int before = often.Status().charge;
    often.Advance(second);
    const PowerStatus status = often.Status();
    states.insert(status.state);
    EXPECT_LE(std::abs(status.charge - before), 4) << "at second " << second;
    EXPECT_EQ(status.mainsVoltage == 0, status.state == static_cast<int>(ChargerState::kDischarging));
    EXPECT_TRUE(status.batteryVoltage >= 5000 && status.batteryVoltage <= 8000);
    EXPECT_TRUE(status.temperature >= 110 && status.temperature <= 150) << status.temperature;
  }
  EXPECT_EQ(states, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  once.Advance(900);
  EXPECT_EQ(FormatPowerStatus(once.Status()), FormatPowerStatus(often.Status()));
  once.Preset(10);
  EXPECT_EQ(once.Status().state, static_cast<int>(ChargerState::kInitialCharge));
}

}  // namespace ox::sim
