// Ten thousand sessions with faults at random, after each of which nothing may be left behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "program/program_rig.h"
#include "simulator/modem.h"

namespace ox::test {
namespace {

constexpr int kSessions = 10'000;
constexpr int kWarmUp = 1000;  // sessions until every buffer has had its chance to grow
constexpr double kFaultRate = 0.01;
/// What a text may keep of its longest content.
constexpr long kKeptBytes = 4096;
constexpr long kKeptBlocks = 16;

class Endurance : public testing::Test {
 protected:
  using Session = void (Endurance::*)();

  bool Chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
  int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }

  // The sessions.

  void TestConnection() { rig_.Click(rig_.Main().MenuVerb); }

  void Poll() {
    rig_.Exchange([this](Datenaustausch& window) {
      rig_.Type(window.MST, "10100100");
      rig_.Type(window.Par, Chance(0.5) ? "0001" : "");
      const std::array<Button*, 4> polls{&window.Einzelabruf, &window.Abruf_Y, &window.Sammelabruf,
                                         &window.Zeitabruf};
      for (int count = 1 + Below(2); count > 0; --count) rig_.Click(*polls[static_cast<size_t>(Below(4))]);
    });
  }

  void PollCyclically() {
    rig_.Exchange([this](Datenaustausch& window) {
      DuringTheSession(Below(300) / 10.0, [&] { rig_.Click(window.Abbruch); });
      // A user who misses the button closes the window.
      DuringTheSession(40, [&] { rig_.Close(window); });
      rig_.Click(window.Zyklischer_Abruf);
    });
  }

  void LoadNames() {
    rig_.Exchange([this](Datenaustausch& window) { rig_.Choose(window.duemstwal, "netz"); });
  }

  void Monitor() { rig_.Monitor(Below(40) / 10.0); }

  void TestModem() {
    sim::ModemOptions options;
    options.line = *sim::ParseLineSettings(rig_.Settings().DialogueSettings());
    sim::SimulatedModem modem(options);
    if (!missing_) rig_.host.ports.Connect(1, &modem);
    rig_.TestModem();
    if (!missing_) rig_.host.ports.Connect(1, &rig_.Device());
  }

  void PackFirmware() { rig_.PackFirmware(); }

  void UpdateTables() {
    rig_.UpdateTables();
    if (!rig_.Device().LoaderRunning()) return;
    EndFaults();
    rig_.Messages();
    rig_.UpdateTables();
    EXPECT_EQ(rig_.Messages(), std::vector<std::string>{kTablesWritten});
    EXPECT_TRUE(rig_.Device().Memory().TablesSound());
  }

  void UpdateProgram() {
    rig_.UpdateProgram();
    EndFaults();
    // Only the workshop brings a device back whose program is spoiled.
    if (rig_.Device().LoaderRunning()) ConnectDevice(AnyGeneration());
  }

  Session AnySession() {
    static constexpr std::array<std::pair<Session, int>, 9> kShares{{
        {&Endurance::TestConnection, 150},
        {&Endurance::Poll, 624},
        {&Endurance::PollCyclically, 20},
        {&Endurance::LoadNames, 20},
        {&Endurance::Monitor, 100},
        {&Endurance::TestModem, 70},
        {&Endurance::PackFirmware, 6},
        {&Endurance::UpdateTables, 8},
        {&Endurance::UpdateProgram, 2},
    }};  // in a thousand
    int draw = Below(1000);
    for (const auto& [session, share] : kShares) {
      if ((draw -= share) < 0) return session;
    }
    return &Endurance::Poll;
  }

  // The devices and their faults.

  int AnyGeneration() { return 1 + Below(3); }

  void ConnectDevice(int generation) {
    sim::DeviceOptions options;
    options.generation = generation_ = generation;
    options.baud = std::array{2400U, 4800U, 9600U, 19200U}[static_cast<size_t>(Below(4))];
    options.parity = Chance(0.5) ? 'E' : 'O';
    options.rubbishWhenUnfit = Chance(0.2);
    options.stations.points = {{"10100100", "101", "Quell", 0, 0, {"0001", "0002"}}};
    options.replies.leastRecords = Chance(0.1) ? 100U : 0U;
    rig_.Connect(options);
  }

  /// In the middle of the session, but not of a later one.
  template <class Action>
  void DuringTheSession(double seconds, Action action) {
    rig_.host.windows.In(seconds, [this, action, session = session_] {
      if (session == session_ && rig_.Visited() != nullptr) action();
    });
  }

  /// Every reply of the device is struck with the same probability.
  void AddReplyFault() {
    using Kind = sim::ReplyFault::Kind;
    static constexpr std::array kKinds{Kind::Silence,     Kind::Replaced,          Kind::Doubled,
                                       Kind::NoiseBefore, Kind::LastCharacterLost, Kind::Late,
                                       Kind::Split};
    sim::ReplyFault fault;
    fault.kind = kKinds[static_cast<size_t>(Below(kKinds.size()))];
    fault.which.nth = std::geometric_distribution(kFaultRate)(random_);
    fault.which.times = 1 + Below(3);
    fault.text = std::array<const char*, 4>{"N", "R", "\xFF\x13", "E\r"}[static_cast<size_t>(Below(4))];
    fault.delay = Below(30) / 10.0;
    fault.requestLost = Chance(0.5);
    rig_.Device().Faults().Add(fault);
  }

  void AddFaults() {
    TestHost& host = rig_.host;
    AddReplyFault();
    if (Strikes()) missing_ = true;
    if (missing_) host.ports.Remove(1);
    if (Strikes()) host.ports.BreakAfterSending(static_cast<size_t>(Below(100)));
    if (Strikes()) DuringTheSession(Below(40) / 10.0, [this] { rig_.host.ports.Break(); });
    if (Strikes()) DuringTheSession(Below(40) / 10.0, [this] { rig_.Close(*rig_.Visited()); });
    if (Strikes()) host.windows.Answer({Answer::Cancel});
    if (Strikes()) host.files.writable = false;
    if (Strikes()) host.files.appendable = static_cast<size_t>(Below(5));
    if (Strikes()) host.files.unreadable = {"/arbeit/netz.par", "/arbeit/ox3.pr3", "OX3NEU.LDR"};
  }
  bool Strikes() { return Chance(kFaultRate); }

  void EndFaults() {
    ++session_;
    missing_ = false;
    rig_.Device().Faults().Clear();
    rig_.host.ports.Mend();
    rig_.host.ports.Connect(1, &rig_.Device());
    rig_.host.files.writable = true;
    rig_.host.files.appendable = Files::kNoLimit;
    rig_.host.files.unreadable.clear();
    // What the device was about to say goes out to nobody.
    rig_.host.windows.Pass(10);
  }

  void RunSession() {
    const Session session = AnySession();
    const bool update = session == &Endurance::UpdateTables || session == &Endurance::UpdateProgram;
    // Tables and programs of the first generation are not for this program.
    if (update && generation_ == 1) ConnectDevice(3);
    if (Chance(kFaultRate)) ConnectDevice(update ? 2 + Below(2) : AnyGeneration());
    AddFaults();
    (this->*session)();
    EXPECT_EQ(rig_.Visited(), nullptr);
    EXPECT_EQ(rig_.host.ports.OpenCount(), 0);
    EXPECT_EQ(rig_.host.files.openForAppending, 0);
    const std::vector<std::string> messages = rig_.Messages();
    EXPECT_EQ(std::ranges::count(messages, "Unerwarteter Fehler: Vorgang abgebrochen!"), 0);
    if (std::ranges::any_of(messages, [](const auto& text) {
          return text.find("bgebrochen") != std::string::npos || text.find("öffnen") != std::string::npos;
        })) {
      ++brokenOff_;
    }
    EndFaults();
    rig_.host.ports.ForgetSent();
  }

  void ExpectReachable() {
    rig_.Click(rig_.Main().MenuVerb);
    const auto messages = rig_.Messages();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_TRUE(messages.front().starts_with(kConnected)) << messages.front();
  }

  std::mt19937 random_{20261122};
  ProgramRig rig_;
  int generation_ = 0;
  int brokenOff_ = 0;  // sessions that a fault reached
  bool missing_ = false;
  int session_ = 0;
};

TEST_F(Endurance, TenThousandSessionsLeaveNothingBehind) {
  ConnectDevice(AnyGeneration());
  HeapUse warm;
  for (int session = 1; session <= kSessions; ++session) {
    RunSession();
    ExpectReachable();
    ASSERT_FALSE(HasFailure()) << "session " << session;
    if (session == kWarmUp) warm = ProgramHeap();
  }
  EXPECT_GT(brokenOff_, 300);
  EXPECT_LE(ProgramHeap().blocks, warm.blocks + kKeptBlocks);
  EXPECT_LE(ProgramHeap().bytes, warm.bytes + kKeptBytes);
}

}  // namespace
}  // namespace ox::test
