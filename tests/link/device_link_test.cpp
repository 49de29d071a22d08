// The dialogue: what goes over the line, what the trace says of it, what comes back, and how long it takes.
#include "link/device_link.h"

#include <set>

#include "support/test_host.h"
#include "ui/window.h"

namespace ox::test {
namespace {

struct DeviceDialogue : testing::Test {
  using Script = std::vector<std::pair<Bytes, std::vector<ScriptedDevice::Piece>>>;

  struct TraceWindow : Window {
    explicit TraceWindow(Host& host)
        : Window(host.windows, "TraceWindow", ""), Hinweis(*this, host.notices) {}
    TextBox datanz{*this, "datanz"};
    QuietLine Hinweis;
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

  TestHost host_;
  SessionSettings settings_{.BaudRate = "19200", .Parity = "E", .ComPort = "3"};
  TraceWindow window_{host_.host};
  DeviceLink link_{host_.host, settings_, window_.datanz};
  std::optional<ScriptedDevice> device_;
};

TEST_F(DeviceDialogue, TakesItsStepsInTheirTime) {
  struct Row {
    Script script;
    bool multiRecord;
    std::string result;
    double seconds;
  };
  const std::string wrong = " Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen!";
  const Script::value_type s{"S", {}}, sA{"S", {{0, "A"}}}, a{"A", {}}, n{"N", {}};
  const Row rows[] = {
      // Midnight stretches the wait that it overtakes; what follows a reply is dropped.
      {{{"S", {{7, "A"}}}, {"J1\r", {{0, "01\r45\r"}}}, a}, false, "01\r", 7},
      {{sA, {"P", {{0.9, "R1"}, {1.8, "\rE\r0"}}}, a}, true, "R1\rE\r", 1.8},
      // Lines that are in hand cost no time.
      {{sA, {"P", {{0, Bytes(100, '\r') + "E\r"}}}, a}, true, Bytes(100, '\r') + "E\r", 0},
      // The wake-up is tried three times, and its answer is exactly "A".
      {{s, s, {"S", {{0.95, "A"}}}, {"P", {{0, "E\r"}}}, a}, true, "E\r", 2.95},
      {{s, s, s, n}, false, wrong, 3},
      {{{"S", {{0, "AA"}}}, n}, false, wrong, 0},
      // A device that refuses is still waited for; one that ends gets no acknowledgement.
      {{sA, {"P", {{0.1, "N"}, {1, "N1"}, {1.9, "\rE\r"}}}, a}, true, "1\rE\r", 1.9},
      {{sA, {"P", {{0, "\r1\r"}, {0.3, "R"}}}}, true, "\r1\r", 0.35},
      // A line cut off by silence counts as a part; then the next one is waited for.
      {{sA, {"P", {{0, "\rcut"}}}, n}, true, "\rcut" + wrong, 2},
  };
  host_.clock.StartAt(23, 59, 59.5);
  for (const Row& row : rows) {
    const double start = host_.clock.Elapsed();
    EXPECT_EQ(Run(row.script, row.multiRecord), row.result);
    EXPECT_TRUE(device_->Done()) << row.result;
    EXPECT_NEAR(host_.clock.Elapsed() - start, row.seconds, 0.05) << row.result;
    EXPECT_EQ(host_.ports.openings.back(), "3:19200,E,7,1");
  }
  EXPECT_TRUE(
      window_.datanz.Text().ends_with("OX  R\r\nPC -> OX  S\r\nPC <- OX  A\r\nPC -> OX  P\r\nPC <- OX  "
                                      "<CR>\r\nPC <- OX  cut\r\nPC -> OX  N"));
}

TEST_F(DeviceDialogue, ThePiecesInWhichAReplyArrivesMakeNoDifference) {
  const std::string refused = " Orvanexe antwortet nicht oder falsch: Prozedur abgebrochen! N";
  const std::tuple<Bytes, bool, std::string> repliesAndOutcomes[] = {
      {"R", false, " "},
      {"R\r", false, " "},
      {"R1 2345\r", false, "R1 2345\r A"},
      {"NR1\rN1R\rRR\rE\r", true, "R1\r1R\rRR\rE\r A"},
      {"1\rR\r2\rE\r", true, "1\r "},
      {"1\rN", true, "1\r" + refused},
      {"1\rRE\r", true, "1\rRE\r" + refused},
  };
  for (const auto& [reply, multiRecord, outcome] : repliesAndOutcomes) {
    std::vector<std::vector<ScriptedDevice::Piece>> deliveries{{{0, reply}}};
    for (const double baud : {2400.0, 19200.0}) {
      auto& oneByOne = deliveries.emplace_back();
      for (const char c : reply) oneByOne.push_back({static_cast<double>(oneByOne.size()) * 10 / baud, {c}});
    }
    for (std::size_t cut = 1; cut < reply.size(); ++cut)
      deliveries.push_back({{0, reply.substr(0, cut)}, {0.04, reply.substr(cut)}});
    std::set<std::string> seen;
    for (const auto& pieces : deliveries) {
      window_.datanz.SetText("");
      host_.ports.sent.clear();
      const Bytes request = multiRecord ? "P" : "J1\r";
      const std::string told = Run({{"S", {{0, "A"}}}, {request, pieces}}, multiRecord);
      EXPECT_EQ(told + " " + host_.ports.sent.substr(1 + request.size()), outcome);
      seen.insert(window_.datanz.Text());
    }
    EXPECT_EQ(seen.size(), 1U) << reply;
  }
}

/// Once the script is through, every look at the port finds as much as a look takes.
struct Flood : ScriptedDevice {
  Flood(BytesView record, const sim::LineSettings& line) : ScriptedDevice(line) {
    while (look.size() < 64 * 1024) look += record;
  }
  Bytes TakeSome(sim::Seconds now, std::size_t most) override {
    if (!Done()) return ScriptedDevice::TakeSome(now, most);
    taken += look.size();
    return look;
  }
  Bytes look;
  std::size_t taken = 0;
};

TEST_F(DeviceDialogue, AFloodEndsAsSilenceDoesAndTheTraceKeepsItsNewestPart) {
  constexpr std::size_t kMost = 1024 * 1024, kKept = 256 * 1024;
  for (const Bytes record : {"x", "1\r"}) {
    Flood device(record, {19200, 'E', 7});
    device.Expect("S", "A").Expect("P");
    host_.ports.Connect(3, &device);
    EXPECT_EQ(link_.DeviceDialogue("P", true).size(), kMost + 1);
    EXPECT_EQ(host_.windows.TakeMessages().size(), 1U);
    EXPECT_LE(device.taken, kMost + 2 * device.look.size()) << "more than was consumed is held in memory";
  }
  const std::string& trace = window_.datanz.Text();
  EXPECT_TRUE(trace.starts_with("PC <- OX  1<CR>\r\n") && trace.ends_with("\r\nPC -> OX  N"));
  EXPECT_TRUE(trace.size() > kKept - 100 && trace.size() < 2 * kKept + 100) << trace.size();
}

TEST_F(DeviceDialogue, APortThatFailsAnywhereGetsOneMessageAfterItsReasonAndNoResult) {
  const Script script{{"S", {{0, "A"}}}, {"P", {{0, "\r1\r"}, {0.8, "E\r"}}}, {"A", {}}};
  Strings reasons;
  host_.windows.OnMessage([&](const std::string&) { reasons.push_back(window_.Hinweis.Text()); });
  host_.notices.Say(Notices::From::kLog, "Protokoll voll.");
  host_.windows.In(0.4, [&] { host_.ports.Break(); });
  EXPECT_EQ(Run(script), " 3: lässt sich nicht öffnen!");
  for (const auto& [port, sent] : {std::pair{"3", 0U}, {"3", 1U}, {"3", 2U}, {"2", 9U}}) {
    host_.ports.Mend();
    host_.ports.BreakAfterSending(sent);
    settings_.ComPort = port;
    EXPECT_EQ(Run(script), " " + settings_.ComPort + ": lässt sich nicht öffnen!") << sent;
  }
  const std::string log = "\nProtokoll voll.";
  Strings expected(4, "COM3: not open or broken." + log);
  expected.push_back("COM2: wrongly set, broken, taken or missing." + log);
  EXPECT_EQ(reasons, expected);
  host_.ports.Mend();
  settings_.ComPort = "3";
  EXPECT_EQ(Run(script), "\r1\rE\r");
  EXPECT_EQ(window_.Hinweis.Text(), log.substr(1)) << "the port opens well";
}

}  // namespace
}  // namespace ox::test
