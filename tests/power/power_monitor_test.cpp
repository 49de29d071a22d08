// The power monitor between its buttons, its device and its log.
#include "power/power_monitor.h"

#include <algorithm>
#include <cmath>

#include "simulator/device/device.h"
#include "support/test_host.h"

namespace ox::test {

constexpr const char* kLog = "PowerManagementLog.txt";
const Bytes kSample = ">031703B630390352007B0005\r";
const Bytes kOtherState = ">7FFF03B630390352007B0007\r";  // and a charge that is wider than its column

struct PowerMonitorTest : testing::Test {
  PowerMonitorTest() {
    host_.ports.Connect(1, &device_);
    host_.windows.OpenMain(monitor_);
  }

  /// Without a preset, as seven bits, unless told otherwise.
  void Answer(std::vector<ScriptedDevice::Piece> reply, const Bytes& request = ">\x7F\r") {
    device_.Expect("S", "A").Expect(request, std::move(reply)).Expect("A");
  }
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

  std::string Shown(const Bytes& reply) {
    Answer(reply);
    host_.windows.Pass(1);
    return monitor_.BatteryCapacity.Text() + "|" + monitor_.BatteryCheckCapacity.Text() + "|" +
           monitor_.OperationVoltage.Text() + "|" + monitor_.BatteryVoltage.Text() + "|" +
           monitor_.Temperature.Text() + "|" + monitor_.ChargeControllerState.Text();
  }

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
      {">03x7  12G00099-1006400 \r", "0.3%|0.0%|0.000V|0.153V| 0°C|???"},  // up to what is no digit
      {">006403B600640064006300\r", "|||||"},                              // too short
  };
  Run(0);
  for (const auto& [reply, shown] : repliesAndShown) EXPECT_EQ(Shown(reply), shown) << reply;
  std::string states;
  for (const char code : Bytes("0346789AB")) {
    Shown(">00000000000000000000000" + Bytes(1, code) + "\r");
    states += monitor_.ChargeControllerState.Text() + "|";
  }
  EXPECT_EQ(states,
            "???|Warten auf Temperatur|Initialladung|Zeitgesteuerte Ladung|Überladung|Ladung beendet|"
            "Akkukontrolle|Ladung verhindert|???|");
}

TEST_F(PowerMonitorTest, TheCurveShowsEveryReplySinceStartAndIsSaved) {
  Answer(kSample, 2);
  Answer(">0000\r");  // too short: a gap
  Answer(kSample);
  ASSERT_TRUE(monitor_.Verlauf.Data()) << "its empty axes";
  const std::vector<CurveSpan>& spans = monitor_.Verlauf.Data()->spans;
  std::string seen, painted;
  monitor_.Verlauf.ConnectView([&](Change) { painted += std::to_string(spans.size()); });
  Run(4);
  EXPECT_EQ(painted, "0123");
  for (const CurveLine& line : monitor_.Verlauf.Data()->lines) seen += std::to_string(line.least) + " ";
  EXPECT_EQ(std::exchange(seen, ""), "1.000000 0.100000 4.000000 ") << "noise stays small";
  for (const CurveSpan& span : spans) {
    seen += std::to_string(std::lround(span.last)) + (span.afterGap ? "*" : "") + " ";
  }
  EXPECT_EQ(seen, "1 2 4* ");
  EXPECT_EQ(spans[0].ranges[0].last, 79.1);
  host_.windows.SaveTo("/verlauf.png", 0);
  monitor_.Verlauf.Save("PNG");
  EXPECT_EQ(host_.files.content["/verlauf.png"], "PNG");
  EXPECT_EQ(host_.windows.Proposed(), "Stromversorgung_2026-11-16_10-00-04 Bild (png)");
  monitor_.MonitorStop.Click();
  host_.windows.Pass(1);
  EXPECT_EQ(std::exchange(seen, std::to_string(spans.size())), "1 2 4* ")
      << "it stays when the monitor stops";
  Run(0);
  EXPECT_EQ(spans.size(), 0U);
}

TEST_F(PowerMonitorTest, LogsEveryChangeAndEveryMinuteOfItsRuns) {
  host_.clock.StartAt(23, 59, 57.5);
  Answer(kSample, 3);
  Answer({{0.4, kOtherState}});
  Answer(kOtherState, 60);  // the last comes somewhat less than a minute after the first
  Run(64);
  monitor_.MonitorStop.Click();
  host_.windows.Pass(1);
  Answer(kOtherState);
  Run(1);
  const std::string header = "\r\n\r\n" + std::string(140, '-') + "\r\n";
  const auto line = [](const std::string& time, const std::string& state) {
    return "11-" + time + "  Akkuldg: " + (state == "Überladung" ? "276.7%" : " 79.1%") +
           "  Akkuspg: 0.850V  Netzteilspg: 12.345V  Kapazität:  95.0%  Temp.: 23°C  "
           "Ladebetrieb: " +
           state + "\r\n";
  };
  EXPECT_EQ(host_.files.content[kLog], header + line("16-2026 23:59:58", "Schnellladung") +
                                           line("17-2026 00:00:00", "Schnellladung") +  // midnight
                                           line("17-2026 00:00:01", "Überladung") +
                                           line("17-2026 00:01:01", "Überladung") + header +
                                           line("17-2026 00:01:03", "Überladung"));
}

TEST_F(PowerMonitorTest, SendsAPresetFrom0To100Once) {
  sim::Device device{sim::DeviceOptions{}};
  host_.ports.Connect(1, &device);
  Run(0);
  std::string presets;
  for (const char* text :
       {" 50%", "12,9", "7.4", "", ".6", "0.5", "1.5", "100.5", "-0.5", "-1", "100.51", "4294967346"}) {
    Preset(text);
    host_.ports.sent.clear();
    host_.windows.Pass(2);
    const std::size_t behindWakeUpAndLetter = 2;
    presets += std::to_string(ByteValue(host_.ports.sent.at(behindWakeUpAndLetter))) + " ";
    EXPECT_TRUE(host_.ports.sent.ends_with("\rAS>\xFF\rA")) << text;
  }
  EXPECT_EQ(presets, "50 12 7 0 1 0 2 100 0 255 255 255 ");
}

TEST_F(PowerMonitorTest, ASlowReplyCountsAlthoughItsUserStoppedOrClosed) {
  const std::vector<ScriptedDevice::Piece> slow{
      {0.9, kSample.substr(0, 5)}, {1.7, kSample.substr(5, 5)}, {2.5, kSample.substr(10)}};
  EXPECT_EQ(State(), "idle");
  Answer(slow);
  host_.windows.In(0.9, [this] { EXPECT_EQ(State() + host_.ports.sent, "running"); });
  host_.windows.In(2.1, [this] { Preset("50"); });
  host_.windows.In(2.2, [this] { monitor_.MonitorStop.Click(); });
  Run(3);
  EXPECT_EQ(State(), "running") << "until the next tick";
  host_.windows.Pass(1.4);
  EXPECT_EQ(State(), "idle");
  EXPECT_EQ(host_.ports.sent, "S>\xFF\rA") << "ticks never overlap";
  Answer(slow, ">\x32\r");  // what was preset meanwhile
  host_.windows.In(2.2, [this] { Preset("60"), monitor_.RequestClose(); });
  Run(4);
  EXPECT_EQ(State(), "idle, closed");
  monitor_.Open();
  Answer(kSample);
  Run(1);
  EXPECT_EQ(std::ranges::count(host_.files.content[kLog], 'N'), 3) << "samples: no preset was left";
}

TEST_F(PowerMonitorTest, AFailureBesideATurnLetsItEndAndStopsBeforeTheNext) {
  Answer({{0.5, kSample}});
  monitor_.CPreset.onClick = [] { throw std::runtime_error("unexpected"); };
  host_.windows.In(1.2, [this] { monitor_.CPreset.Click(); });
  Run(1);
  EXPECT_EQ(State(), "running: Unerwarteter Fehler: Vorgang abgebrochen!");
  EXPECT_TRUE(host_.files.content[kLog].ends_with("Schnellladung\r\n"));
  host_.windows.Pass(1);
  EXPECT_EQ(State(), "idle");
}

TEST_F(PowerMonitorTest, StopsWhenTheDeviceOrTheLogFailsAndStartsAgain) {
  Answer(kSample);
  Run(6);
  EXPECT_EQ(State(), "idle: Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!");
  const std::string file = " von PowerManagementLog.txt !";
  host_.files.writable = false;
  Run(1);
  EXPECT_EQ(State(), "idle: Fehler beim Öffnen" + file);
  host_.files.writable = true;
  host_.files.appendable = 2;  // lines: not all of the header
  Run(1);
  EXPECT_EQ(State(), "idle: Fehler beim Schreiben" + file);
  host_.files.appendable = 4;  // the header and the first sample
  Answer(kSample);
  Answer(kOtherState);
  Run(1);
  EXPECT_EQ(State(), "running");
  host_.windows.Pass(1);
  EXPECT_EQ(State(), "idle: Fehler beim Schreiben" + file);
}

}  // namespace ox::test
