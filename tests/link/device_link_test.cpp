// The dialogue: what goes over the line, what the trace says of it, what comes back, and how long it takes.
#include "link/device_link.h"

#include <gtest/gtest.h>

#include <regex>

#include "platform/window.h"
#include "support/scripted_device.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

class DeviceDialogue : public testing::Test {
 protected:
  using Pieces = std::vector<ScriptedDevice::Piece>;
  /// What the device hears and what it answers, in turn.
  using Script = std::vector<std::pair<Bytes, Pieces>>;

  /// A window with nothing but a trace panel.
  struct TraceWindow : Window {
    explicit TraceWindow(WindowSystem& windows) : Window(windows, "TraceWindow", "") {}
    TextBox datanz{*this, "datanz"};
  };

  /// Returns the reply and, after a blank, the messages.
  std::string Run(const Script& script, bool multiRecord = true) {
    device_.emplace(sim::LineSettings{19200, 'E', 7});
    for (const auto& [heard, answer] : script) device_->Expect(heard, answer);
    host_.ports.Connect(3, &*device_);
    std::string told = link_.DeviceDialogue(multiRecord ? "P" : "J1\r", multiRecord);
    for (const std::string& message : host_.windows.TakeMessages()) told += " " + message;
    EXPECT_EQ(host_.ports.OpenCount(), 0);
    return told;
  }

  /// The trace on one line, ">" before what was sent and "<" before what came.
  std::string Trace() const {
    std::string trace = window_.datanz.Text();
    for (const auto& [from, to] : {std::pair{"PC -> OX  ", ">"}, {"PC <- OX  ", "<"}, {"\r\n", " "}}) {
      trace = std::regex_replace(trace, std::regex(from), to);
    }
    return trace;
  }

  TestHost host_;
  SessionSettings settings_{.BaudRate = "19200", .Parity = "E", .ComPort = "3"};
  TraceWindow window_{host_.windows};
  DeviceLink link_{host_.host, settings_, window_.datanz};
  std::optional<ScriptedDevice> device_;
};

TEST_F(DeviceDialogue, TakesItsStepsAndTracesThem) {
  struct Row {
    Script script;
    bool multiRecord;
    Bytes reply;
    std::string trace;
    double seconds;
  };
  const Script::value_type s{"S", {}}, sA{"S", {{0, "A"}}}, a{"A", {}}, n{"N", {}};
  const Row rows[] = {
      // Midnight stretches the wait that it overtakes.
      {{{"S", {{7, "A"}}}, {"J1\r", {{0, "01\r45\r"}}}, a}, false, "01\r", ">S <A >J1<CR> <01<CR> >A", 7},
      // What followed a reply is not taken for the beginning of the next.
      {{sA, {"J1\r", {{0, "E\rnoch"}}}, a}, false, "E\r", ">S <A >J1<CR> <E<CR> >A", 0},
      {{sA, {"P", {{0.9, "R1"}, {1.8, "\rE\r0"}}}, a}, true, "R1\rE\r", ">S <A >P <R1<CR> <E<CR> >A", 1.8},
      // The wake-up is tried three times, and its answer is exactly "A".
      {{s, s, {"S", {{0.95, "A"}}}, {"P", {{0, "E\r"}}}, a}, true, "E\r", ">S >S >S <A >P <E<CR> >A", 2.95},
      {{s, s, s, n}, false, "", ">S >S >S >N", 3},
      {{{"S", {{0, "AA"}}}, n}, false, "", ">S <AA >N", 0},
      {{{"S", {{0, "A\n\r\r"}}}, n}, false, "", ">S <A\n\r<CR> >N", 0},
      // A device that refuses is still waited for; one that ends gets no acknowledgement.
      {{sA, {"P", {{0.1, "N"}, {1, "N"}, {1.9, "E\r"}}}, a}, true, "E\r", ">S <A >P <N <N <E<CR> >A", 1.9},
      {{sA, {"P", {{0, "N1\rE\r"}}}, a}, true, "1\rE\r", ">S <A >P <N <1<CR> <E<CR> >A", 0},
      {{sA, {"J1\r", {{0, "NR"}}}}, false, "", ">S <A >J1<CR> <N <R", 0},
      {{sA, {"P", {{0, "N"}}}, n}, true, "", ">S <A >P <N >N", 1},
      {{sA, {"P", {{0, "\r1\r"}, {0.3, "R"}}}}, true, "\r1\r", ">S <A >P <<CR> <1<CR> <R", 0.3},
      // A line cut off by silence counts as a part; then the next one is waited for.
      {{sA, {"P", {{0, "\rcut"}}}, n}, true, "\rcut", ">S <A >P <<CR> <cut >N", 2},
  };
  host_.clock.StartAt(23, 59, 59.5);
  std::string trace;
  for (const Row& row : rows) {
    host_.ports.ForgetSent();
    host_.windows.In(0, [&] { EXPECT_EQ(host_.ports.Sent(), "") << "the trace is painted before a wait"; });
    const double start = host_.clock.Elapsed();
    const bool failed = row.trace.ends_with(">N");
    EXPECT_EQ(Run(row.script, row.multiRecord),
              row.reply + (failed ? " Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!" : ""));
    EXPECT_TRUE(device_->Done() && device_->Unexpected().empty()) << row.trace;
    EXPECT_EQ(Trace(), trace += (trace.empty() ? "" : " ") + row.trace);
    EXPECT_NEAR(host_.clock.Elapsed() - start, row.seconds, 0.05) << row.trace;
    EXPECT_EQ(host_.ports.Openings().back(), "3:19200,E,7,1");
  }
}

TEST_F(DeviceDialogue, APortThatFailsAnywhereGetsOneMessageAndNoResult) {
  const Script script{{"S", {{0, "A"}}}, {"P", {{0, "\r1\r"}, {0.8, "E\r"}}}};
  host_.windows.In(0.4, [&] { host_.ports.Break(); });
  EXPECT_EQ(Run(script), " 3: lässt sich nicht öffnen!");
  for (const auto& [port, sent] : {std::pair{"3", 0U}, {"3", 1U}, {"3", 2U}, {"2", 9U}, {"x", 9U}}) {
    host_.ports.Mend();
    host_.ports.BreakAfterSending(sent);
    settings_.ComPort = port;
    EXPECT_EQ(Run(script), " " + settings_.ComPort + ": lässt sich nicht öffnen!") << sent;
  }
}

TEST_F(DeviceDialogue, ATraceOfTheLatestOnlyIsEmptiedBeforeThePortOpens) {
  SerialLine(host_.host, settings_, window_.datanz, kDeviceTrace).WriteTrace("T");
  EXPECT_EQ(window_.datanz.Text(), "PC -> OX  ");
  DeviceLink(host_.host, settings_, window_.datanz, TraceMode::LatestOnly).DeviceDialogue("T", false);
  EXPECT_EQ(window_.datanz.Text(), "");
}

}  // namespace
}  // namespace ox::test
