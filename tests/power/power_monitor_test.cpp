// The power monitor over a day, and what can go wrong in it.
#include "power/power_monitor.h"

#include <gtest/gtest.h>

#include <sstream>

#include "simulator/device.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kLog = "PowerManagementLog.txt";
constexpr const char* kLogFailure = "Fehler beim Öffnen von PowerManagementLog.txt !";
constexpr const char* kWrongAnswer = "Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!";
const Bytes kNoPresetRequest = ">\x7F\r";  // as seven bits
const Bytes kSample = ">031703B630390352007B0005\r";

class PowerMonitorTest : public ::testing::Test {
 protected:
  void SetUp() override {
    settings_.DeviceIdent = "OX 3";
    Answer(&device_);
  }

  void Answer(sim::Endpoint* device) { host_.ports.Connect(1, device); }

  /// The script of one sample.
  static void ExpectSample(ScriptedDevice& device, const Bytes& request, const Bytes& reply) {
    device.Expect("S", "A").Expect(request, reply).Expect("A");
  }

  void Start() {
    host_.windows.OpenMain(monitor_);
    monitor_.MonitorStart.Click();
  }

  bool Idle() const {
    return monitor_.MonitorStart.Enabled() && !monitor_.MonitorStop.Enabled() &&
           monitor_.Verlassen.Enabled() && !monitor_.PowerTimer.Enabled() &&
           host_.files.openForAppending == 0 && host_.ports.OpenCount() == 0;
  }

  bool Running() const {
    return !monitor_.MonitorStart.Enabled() && monitor_.MonitorStop.Enabled() &&
           !monitor_.Verlassen.Enabled() && monitor_.PowerTimer.Enabled() &&
           host_.files.openForAppending == 1;
  }

  /// The log's lines behind the first header.
  std::vector<std::string> Samples() {
    std::vector<std::string> lines;
    std::istringstream log(host_.files.content[kLog]);
    for (std::string line; std::getline(log, line);) {
      EXPECT_TRUE(line.ends_with('\r'));
      if (line.size() > 1 && line.front() != '-') lines.push_back(line.substr(0, line.size() - 1));
    }
    return lines;
  }

  TestHost host_;
  SessionSettings settings_;
  sim::Device device_{sim::DeviceOptions{}};
  PowerMonitor monitor_{host_.host, settings_};
};

TEST_F(PowerMonitorTest, ShowsTheStatusAndTheLatestDialogueOnly) {
  ScriptedDevice device;
  for (int i = 0; i < 2; ++i) ExpectSample(device, kNoPresetRequest, kSample);
  Answer(&device);
  Start();
  EXPECT_TRUE(Running());
  EXPECT_EQ(host_.ports.Sent(), "") << "the first request goes out with the first tick";
  host_.windows.Pass(2.5);
  EXPECT_TRUE(device.Done());
  EXPECT_EQ(device.Unexpected(), "");
  EXPECT_EQ(host_.ports.Sent(), "S>\xFF\rAS>\xFF\rA");
  EXPECT_EQ(monitor_.BatteryCapacity.Text() + monitor_.BatteryCheckCapacity.Text(), "79.1%95.0%");
  EXPECT_EQ(monitor_.OperationVoltage.Text() + monitor_.BatteryVoltage.Text(), "12.345V0.850V");
  EXPECT_EQ(monitor_.Temperature.Text() + monitor_.ChargeControllerState.Text(), " 23°CSchnellladung");
  EXPECT_EQ(monitor_.datanz.Text(),
            "PC -> OX  S\r\nPC <- OX  A\r\nPC -> OX  >ÿ<CR>\r\n"
            "PC <- OX  >031703B630390352007B0005<CR>\r\nPC -> OX  A");
  EXPECT_EQ(Samples().size(), 1U);
  monitor_.MonitorStop.Click();
  EXPECT_TRUE(Running()) << "until the next tick";
  host_.windows.Pass(1);
  EXPECT_TRUE(Idle());
}

TEST_F(PowerMonitorTest, ADayLosesNoLineAndKeepsNothing) {
  constexpr double kDay = 86400;
  host_.clock.StartAt(10, 0, 0.25);
  std::size_t states = 0;
  std::size_t longestTrace = 0;
  monitor_.ChargeControllerState.ConnectView([&](Change) { ++states; });
  monitor_.datanz.ConnectView(
      [&](Change) { longestTrace = std::max(longestTrace, monitor_.datanz.Text().size()); });
  Start();
  host_.windows.Pass(kDay + 0.5);
  EXPECT_TRUE(Running());
  EXPECT_GE(host_.ports.Openings().size(), kDay - 1) << "one dialogue a tick";

  const std::vector<std::string> lines = Samples();
  std::size_t changes = 0;
  int last = -1000;
  std::string lastState;
  for (const std::string& line : lines) {
    const int day = std::stoi(line.substr(3, 2)) - 16;
    const int now = ((day * 24 + std::stoi(line.substr(11, 2))) * 60 + std::stoi(line.substr(14, 2))) * 60 +
                    std::stoi(line.substr(17, 2));
    const std::string state = line.substr(line.rfind(": ") + 2);
    const bool midnight = day == 1 && now % static_cast<int>(kDay) <= 1;
    if (state != lastState) ++changes;
    EXPECT_TRUE(lastState.empty() || now - last <= 61) << line;
    EXPECT_TRUE(state != lastState || midnight || now - last >= 59) << line;
    last = now;
    lastState = state;
  }
  EXPECT_EQ(changes, states) << "every state that was shown stands in the log";
  EXPECT_GT(states, 1000U);
  EXPECT_LT(longestTrace, 200U);
}

TEST_F(PowerMonitorTest, APresetIsSentOnce) {
  ScriptedDevice device;
  ExpectSample(device, kNoPresetRequest, kSample);
  ExpectSample(device, ">\x32\r", kSample);
  for (int i = 0; i < 2; ++i) ExpectSample(device, kNoPresetRequest, kSample);
  ExpectSample(device, Bytes(">\0\r", 3), kSample);
  Answer(&device);
  Start();
  host_.windows.Pass(1.5);
  const auto preset = [this](const char* text) {
    monitor_.TPreset.Edit(text);
    monitor_.CPreset.Click();
  };
  preset("50");
  host_.windows.Pass(2);
  preset("150");
  host_.windows.Pass(1);
  preset("kein");
  host_.windows.Pass(1);
  EXPECT_TRUE(device.Done());
  EXPECT_EQ(device.Unexpected(), "");
}

TEST_F(PowerMonitorTest, AShortReplyBlanksTheDisplaysAndIsNotLogged) {
  ScriptedDevice device;
  ExpectSample(device, kNoPresetRequest, kSample);
  ExpectSample(device, kNoPresetRequest, ">031703B6\r");
  ExpectSample(device, kNoPresetRequest, "\r");
  Answer(&device);
  Start();
  host_.windows.Pass(3.5);
  EXPECT_TRUE(Running());
  for (const Label* display :
       {&monitor_.BatteryCapacity, &monitor_.BatteryCheckCapacity, &monitor_.OperationVoltage,
        &monitor_.BatteryVoltage, &monitor_.Temperature, &monitor_.ChargeControllerState}) {
    EXPECT_EQ(display->Text(), "") << display->Name();
  }
  EXPECT_EQ(Samples().size(), 1U);
}

TEST_F(PowerMonitorTest, StopsWhenTheDeviceFallsSilentAndStartsAgain) {
  Start();
  host_.windows.Pass(1.5);
  device_.Faults().Add({.which = {.times = 3}});
  host_.windows.Pass(5);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(host_.windows.TakeMessages(), std::vector<std::string>{kWrongAnswer});
  monitor_.MonitorStart.Click();
  host_.windows.Pass(1.5);
  EXPECT_TRUE(Running());
  EXPECT_EQ(Samples().size(), 2U) << "the first sample of each run";
  host_.ports.Break();
  host_.windows.Pass(1);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(host_.windows.TakeMessages(), std::vector<std::string>{"1: lässt sich nicht öffnen!"});
}

/// A reply that takes 2.5 seconds: two ticks come while it is under way.
class SlowPowerMonitorTest : public PowerMonitorTest {
 protected:
  void SetUp() override {
    slow_.Expect("S", "A")
        .Expect(kNoPresetRequest,
                {{0.9, kSample.substr(0, 5)}, {1.7, kSample.substr(5, 5)}, {2.5, kSample.substr(10)}})
        .Expect("A");
    Answer(&slow_);
    Start();
  }

  ScriptedDevice slow_;
};

TEST_F(SlowPowerMonitorTest, TicksNeverOverlapAndStopTakesEffectAfterTheReply) {
  host_.windows.In(2.2, [this] { monitor_.MonitorStop.Click(); });
  host_.windows.Pass(3.7);
  EXPECT_EQ(host_.ports.Sent(), "S>\xFF\rA");
  EXPECT_EQ(Samples().size(), 1U) << "the reply still counts";
  EXPECT_TRUE(Running());
  host_.windows.Pass(1.1);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(host_.ports.Sent(), "S>\xFF\rA");
}

TEST_F(SlowPowerMonitorTest, ClosingDuringADialogueWaitsForIt) {
  host_.windows.In(2.2, [this] { monitor_.RequestClose(); });
  host_.windows.In(3.3, [this] { EXPECT_TRUE(monitor_.IsOpen()); });
  host_.windows.Pass(3.7);
  EXPECT_FALSE(monitor_.IsOpen());
  EXPECT_TRUE(Idle());
  EXPECT_EQ(Samples().size(), 1U);
}

TEST_F(PowerMonitorTest, StartsAgainAfterAStopAndStopsBeforeItCloses) {
  Start();
  monitor_.MonitorStop.Click();
  host_.windows.Pass(1.5);
  EXPECT_TRUE(Idle());
  monitor_.MonitorStart.Click();
  host_.windows.Pass(1.5);
  EXPECT_TRUE(Running());
  monitor_.Verlassen.Click();
  EXPECT_TRUE(monitor_.IsOpen()) << "disabled while it runs";
  monitor_.RequestClose();
  EXPECT_FALSE(monitor_.IsOpen());
  EXPECT_TRUE(Idle());
  host_.windows.OpenMain(monitor_);
  monitor_.Verlassen.Click();
  EXPECT_FALSE(monitor_.IsOpen());
}

TEST_F(PowerMonitorTest, ALogThatCannotBeWrittenStopsIt) {
  host_.files.writable = false;
  Start();
  EXPECT_TRUE(Idle());
  EXPECT_EQ(host_.windows.TakeMessages(), std::vector<std::string>{kLogFailure});
  EXPECT_EQ(host_.ports.Sent(), "");

  host_.files.writable = true;
  host_.files.appendable = 4;  // header and first sample
  monitor_.MonitorStart.Click();
  host_.windows.Pass(1.5);
  EXPECT_TRUE(Running());
  host_.windows.OnMessage([this](const std::string&) { host_.windows.Pass(3); });
  host_.windows.Pass(62);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(host_.windows.TakeMessages(), std::vector<std::string>{kLogFailure});
}

}  // namespace
}  // namespace ox::test
