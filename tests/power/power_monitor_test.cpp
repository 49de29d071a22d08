// The power monitor between its buttons, its device and its log.
#include "power/power_monitor.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/device.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

constexpr const char* kLog = "PowerManagementLog.txt";
constexpr const char* kStoppedByLog = "idle: Fehler beim Öffnen von PowerManagementLog.txt !";
const Bytes kNoPreset = ">\x7F\r";  // as seven bits
const Bytes kSample = ">031703B630390352007B0005\r";

class PowerMonitorTest : public testing::Test {
 protected:
  PowerMonitorTest() {
    host_.ports.Connect(1, &device_);
    host_.windows.OpenMain(monitor_);
  }

  void Answer(std::vector<ScriptedDevice::Piece> reply, const Bytes& request = kNoPreset) {
    device_.Expect("S", "A").Expect(request, std::move(reply)).Expect("A");
  }
  /// The device answers so many requests with this.
  void Answer(const Bytes& reply, int times = 1) {
    for (int i = 0; i < times; ++i) Answer({{0, reply}});
  }

  /// Starts and lets the time pass until the last of so many ticks is over.
  void Run(int ticks) {
    monitor_.MonitorStart.Click();
    host_.windows.Pass(ticks + 0.01);
  }

  /// What the window and its log are in, and the messages since the last call.
  std::string State() {
    const bool running[] = {!monitor_.MonitorStart.Enabled(), monitor_.MonitorStop.Enabled(),
                            !monitor_.Verlassen.Enabled(), monitor_.PowerTimer.Enabled(),
                            host_.files.openForAppending != 0};
    const auto signs = std::ranges::count(running, true);
    std::string state = signs == std::ssize(running) ? "running" : signs != 0 ? "neither" : "idle";
    if (!monitor_.IsOpen()) state += ", closed";
    for (const std::string& message : host_.windows.TakeMessages()) state += ": " + message;
    return state;
  }

  std::string Shown() const {
    return monitor_.BatteryCapacity.Text() + "|" + monitor_.BatteryCheckCapacity.Text() + "|" +
           monitor_.OperationVoltage.Text() + "|" + monitor_.BatteryVoltage.Text() + "|" +
           monitor_.Temperature.Text() + "|" + monitor_.ChargeControllerState.Text();
  }

  auto SamplesLogged() { return std::ranges::count(host_.files.content[kLog], 'N'); }

  void Preset(const char* charge) {
    monitor_.TPreset.Edit(charge);
    monitor_.CPreset.Click();
  }

  TestHost host_;
  SessionSettings settings_;
  ScriptedDevice device_;
  PowerMonitor monitor_{host_.host, settings_};
};

TEST_F(PowerMonitorTest, ShowsEveryReplyFieldByField) {
  const std::pair<Bytes, std::string> repliesAndShown[] = {
      {kSample, "79.1%|95.0%|12.345V|0.850V| 23°C|Schnellladung"},
      {">0007000003E80001005F0001more\r", "0.7%|0.0%|1.000V|0.001V|-5°C|Entladung"},
      {">7FFFFFFF8000FFF680000002\r", "3276.7%|0.1%|32.768V|0.010V|-32868°C|Ladung blockiert"},
      {">03x7  12G00099-1006400 3\r", "0.3%|0.0%|0.000V|0.153V| 0°C|???"},  // up to what is no digit
      {">006403b6006400640063000a\r", "10.0%|95.0%|0.100V|0.100V|-1°C|Ladung verhindert"},
      {">006403B6006400640063000\r", "10.0%|95.0%|0.100V|0.100V|-1°C|???"},
      {">006403B600640064006300\r", "|||||"},  // too short
      {">000000000000000000000003\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Warten auf Temperatur"},
      {">000000000000000000000004\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Initialladung"},
      {">000000000000000000000006\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Zeitgesteuerte Ladung"},
      {"\r", "|||||"},
      {">000000000000000000000007\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Überladung"},
      {">000000000000000000000008\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Ladung beendet"},
      {">000000000000000000000009\r", "0.0%|0.0%|0.000V|0.000V|-100°C|Akkukontrolle"},
      {">00000000000000000000000B\r", "0.0%|0.0%|0.000V|0.000V|-100°C|???"},
      {">00000000000000000000FFFF\r", "0.0%|0.0%|0.000V|0.000V|-100°C|???"},
  };
  Run(0);
  for (const auto& [reply, shown] : repliesAndShown) {
    Answer(reply);
    host_.windows.Pass(1);
    EXPECT_EQ(Shown(), shown) << reply;
  }
  EXPECT_EQ(SamplesLogged(), 14) << "all that were shown";
}

TEST_F(PowerMonitorTest, LogsEveryChangeAndEveryMinuteOfItsRuns) {
  host_.clock.StartAt(23, 59, 57.5);
  Answer(kSample, 3);
  Answer(">031703B630390352007B0007\r", 61);
  Run(64);
  monitor_.MonitorStop.Click();
  host_.windows.Pass(1);
  Answer(kSample);
  Run(1);
  const std::string header = "\r\n\r\n" + std::string(140, '-') + "\r\n";
  const auto line = [](const std::string& time, const std::string& state) {
    return "11-" + time +
           "  Akkuldg:  79.1%  Akkuspg: 0.850V  Netzteilspg: 12.345V  Kapazität:  95.0%  Temp.: 23°C  "
           "Ladebetrieb: " +
           state + "\r\n";
  };
  EXPECT_EQ(host_.files.content[kLog], header + line("16-2026 23:59:58", "Schnellladung") +
                                           line("17-2026 00:00:00", "Schnellladung") +  // midnight
                                           line("17-2026 00:00:01", "Überladung") +
                                           line("17-2026 00:01:01", "Überladung") + header +
                                           line("17-2026 00:01:03", "Schnellladung"));
}

TEST(PowerLog, KeepsTheEndsOfLongTextsAndIsDueHalfASecondEarly) {
  EXPECT_EQ(LogLine({2027, 1, 2, 3, 4, 5}, {"3276.7%", "0.7%", "0.001V", "+20.000V", "-32868°C", "???"}),
            "01-02-2027 03:04:05  Akkuldg: 276.7%  Akkuspg:20.000V  Netzteilspg:  0.001V  "
            "Kapazität:   0.7%  Temp.:868°C  Ladebetrieb: ???");
  LogRule rule;
  rule.Restart(30);
  EXPECT_TRUE(rule.TakeIfDue(0, 30)) << "the first sample always";
  EXPECT_FALSE(rule.TakeIfDue(0, 89.25F));
  EXPECT_TRUE(rule.TakeIfDue(0, 89.5F));
}

TEST_F(PowerMonitorTest, RunsBetweenStartAndStopp) {
  EXPECT_EQ(State(), "idle");
  Run(0);
  EXPECT_EQ(State(), "running");
  EXPECT_EQ(host_.ports.Sent(), "") << "the first request goes out with the first tick";
  Answer(kSample, 3);
  host_.windows.Pass(2);
  EXPECT_EQ(host_.ports.Sent(), "S>\xFF\rAS>\xFF\rA");
  EXPECT_EQ(monitor_.datanz.Text(),
            "PC -> OX  S\r\nPC <- OX  A\r\nPC -> OX  >ÿ<CR>\r\n"
            "PC <- OX  >031703B630390352007B0005<CR>\r\nPC -> OX  A");
  monitor_.MonitorStop.Click();
  EXPECT_EQ(State(), "running") << "until the next tick";
  host_.windows.Pass(1);
  EXPECT_EQ(State(), "idle");
  Run(1);
  Preset("50");
  monitor_.RequestClose();
  EXPECT_EQ(State(), "idle, closed");
  monitor_.Open();
  Answer(kSample);
  Run(1);
  EXPECT_EQ(State(), "running") << "the preset is forgotten";
  monitor_.MonitorStop.Click();
  host_.windows.Pass(1);
  monitor_.Verlassen.Click();
  EXPECT_EQ(State(), "idle, closed");
}

TEST_F(PowerMonitorTest, SendsAPresetFrom0To100Once) {
  sim::Device device{sim::DeviceOptions{}};
  host_.ports.Connect(1, &device);
  Run(0);
  const std::pair<const char*, char> textsAndPresets[] = {
      {"50", 50},         {" 50%", 50},    {"+7", 7},         {"007", 7},
      {"12,9", 12},       {"", 0},         {"ä50", 0},        {"nan", 0},
      {"-", 0},           {".6", 1},       {"0.5", 0},        {"1.5", 2},
      {"2.50", 2},        {"2.5001", 3},   {"2.49", 2},       {"99.9", 100},
      {"100.5", 100},     {"-0.5", 0},     {"-1", '\xFF'},    {"-1.5", '\xFF'},
      {"100.51", '\xFF'}, {"150", '\xFF'}, {"65586", '\xFF'}, {"4294967346", '\xFF'},
  };
  for (const auto& [text, preset] : textsAndPresets) {
    Preset(text);
    host_.ports.ForgetSent();
    host_.windows.Pass(2);
    EXPECT_EQ(host_.ports.Sent(), Bytes("S>") + preset + "\rAS>\xFF\rA") << text;
  }
}

TEST_F(PowerMonitorTest, ASlowReplyCountsAlthoughItsUserStoppedOrClosed) {
  const std::vector<ScriptedDevice::Piece> slow{
      {0.9, kSample.substr(0, 5)}, {1.7, kSample.substr(5, 5)}, {2.5, kSample.substr(10)}};
  Answer(slow);
  host_.windows.In(2.1, [this] { Preset("50"); });
  host_.windows.In(2.2, [this] { monitor_.MonitorStop.Click(); });
  Run(3);
  EXPECT_EQ(State(), "running");
  host_.windows.Pass(1.4);
  EXPECT_EQ(State(), "idle");
  EXPECT_EQ(host_.ports.Sent(), "S>\xFF\rA") << "ticks never overlap";
  Answer(slow, ">\x32\r");  // what was preset meanwhile
  host_.windows.In(2.2, [this] { monitor_.RequestClose(); });
  host_.windows.In(3.3, [this] { EXPECT_EQ(State(), "running"); });
  Run(4);
  EXPECT_EQ(State(), "idle, closed");
  EXPECT_EQ(SamplesLogged(), 2);
}

TEST_F(PowerMonitorTest, StopsWhenDevicePortOrLogFailsAndStartsAgain) {
  Answer(kSample);
  Run(6);
  EXPECT_EQ(State(), "idle: Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!");
  host_.ports.Break();
  Run(1);
  EXPECT_EQ(State(), "idle: 1: lässt sich nicht öffnen!");

  host_.ports.Mend();
  host_.ports.ForgetSent();
  host_.files.writable = false;
  Run(1);
  EXPECT_EQ(State(), kStoppedByLog);
  host_.files.writable = true;
  host_.files.appendable = 2;  // lines: a part of the header
  Run(1);
  EXPECT_EQ(State(), kStoppedByLog);
  EXPECT_EQ(host_.ports.Sent(), "");
  host_.files.appendable = 4;  // the header and the first sample
  host_.windows.OnMessage([this](const std::string&) { host_.windows.Pass(3); });
  Answer(kSample, 61);
  Run(60);
  EXPECT_EQ(State(), "running");
  host_.windows.Pass(2);
  EXPECT_EQ(State(), kStoppedByLog);
}

}  // namespace
}  // namespace ox::test
