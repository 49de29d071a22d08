// Ten thousand sessions with faults at random, after each of which nothing may be left behind.
#include <array>
#include <random>

#include "program/heap_meter.h"
#include "program/technician.h"
#include "simulator/demo/demo_tables.h"
#include "support/difference.h"
#include "tables/table_images.h"
#include "tables/table_rig.h"

namespace ox::test {
namespace {

constexpr unsigned kParts = 4;  // of equal length, each with a seed of its own, so that they run side by side
constexpr int kSessions = 10'000 / int{kParts};
constexpr int kWarmUp = 500;  // sessions until every buffer has had its chance to grow
constexpr double kFaultRate = 0.01;
constexpr long kKeptBytes = 4096;  // what a text may keep of its longest content

struct Endurance : testing::TestWithParam<unsigned> {
  using Session = void (Technician::*)();

  bool Chance(double probability) { return std::bernoulli_distribution(probability)(random_); }
  bool Strikes() { return Chance(kFaultRate); }
  int Below(int end) { return std::uniform_int_distribution(0, end - 1)(random_); }
  template <class Choices>
  auto OneOf(const Choices& choices) {
    return choices[static_cast<std::size_t>(Below(static_cast<int>(std::size(choices))))];
  }

  Session AnySession() {
    static constexpr Session kSessionKinds[] = {&Technician::Poll,           &Technician::TestConnection,
                                                &Technician::Monitor,        &Technician::TestModem,
                                                &Technician::PollCyclically, &Technician::UpdateTables,
                                                &Technician::PackFirmware,   &Technician::UpdateProgram};
    static std::discrete_distribution<std::size_t> inAThousand{644, 150, 100, 70, 20, 8, 6, 2};
    return kSessionKinds[inAThousand(random_)];
  }

  void ConnectDevice() {
    sim::DeviceOptions options;
    options.generation = 2 + Below(2);
    options.baud = OneOf(std::array{2400U, 4800U, 9600U, 19200U});
    options.parity = Chance(0.5) ? 'E' : 'O';
    options.rubbishWhenUnfit = Chance(0.2);
    older_ = options.generation == 2;
    options.tables = (older_ ? small_.older : small_.generation3).bytes;
    user_.Connect(options);
  }

  void AddReplyFault() {
    using Kind = sim::ReplyFault::Kind;
    sim::ReplyFault fault;
    fault.kind = OneOf(std::array{Kind::kSilence, Kind::kReplaced, Kind::kDoubled, Kind::kNoiseBefore,
                                  Kind::kLastCharacterLost, Kind::kLate, Kind::kSplit});
    fault.which.nth = std::geometric_distribution(kFaultRate)(random_);
    fault.which.times = 1 + Below(3);
    fault.text = OneOf(std::array{"N", "R", "\xFF\x13", "E\r"});
    fault.delay = Below(30) / 10.0;
    fault.requestLost = Chance(0.5);
    user_.Device().Faults().Add(fault);
  }

  /// In the middle of the session, when it lasts so long.
  void DuringTheSession(std::function<void()> action) {
    user_.host.windows.In(Below(40) / 10.0, [this, action = std::move(action)] {
      if (user_.Visited() != nullptr) action();
    });
  }

  void AddFaults() {
    TestHost& host = user_.host;
    AddReplyFault();
    if (Strikes()) user_.PlugIn(false);
    if (Strikes()) host.ports.BreakAfterSending(static_cast<std::size_t>(Below(100)));
    if (Strikes()) DuringTheSession([this] { user_.host.ports.Break(); });
    if (Strikes()) DuringTheSession([this] { user_.Close(*user_.Visited()); });
    if (Strikes()) host.windows.CancelNext();
    if (Strikes()) host.files.writable = false;
    if (Strikes()) host.files.appendable = static_cast<std::size_t>(Below(5));
    if (Strikes()) host.files.unreadable = {"/arbeit/netz.par", "/arbeit/ox3.pr3", "/arbeit/OX3NEU.LDR"};
  }

  void EndFaults() {
    TestHost& host = user_.host;
    user_.Device().Faults().Clear();
    user_.PlugIn(true);
    host.ports.Mend();
    host.ports.sent.clear();
    host.files.writable = true;
    host.files.appendable = Files::kNoLimit;
    host.files.unreadable.clear();
    host.files.content.erase("PowerManagementLog.txt");
    // Time passes: what the device still has to say reaches nobody, and faults that are still due strike
    // nothing.
    host.windows.Pass(10);
  }

  void RunSession() {
    const Session session = AnySession();
    if (Strikes()) ConnectDevice();
    AddFaults();
    (user_.*session)();
    EXPECT_EQ(user_.Visited(), nullptr);
    EXPECT_EQ(user_.host.ports.OpenCount() + user_.host.files.openForAppending, 0);
    for (const std::string& message : user_.Messages()) {
      EXPECT_NE(message, "Unerwarteter Fehler: Vorgang abgebrochen!");
      if (message.find("bgebrochen") != std::string::npos) ++brokenOff_;
    }
    EndFaults();
    if (!user_.Device().LoaderRunning()) return;
    // Tables can be written anew; only the workshop brings a device back whose program is spoiled.
    if (session == &Technician::UpdateProgram) return ConnectDevice();
    user_.UpdateTables();
    const Bytes image = sim::ReadDemoImage(OX_DEMO_FOLDER, older_);
    EXPECT_EQ(Difference(user_.Device().Memory().Tables(), image, PartsOfImage(image)), "");
    user_.Messages();
  }

  void ExpectReachable() {
    user_.TestConnection();
    const std::string message = user_.Messages().at(0);
    EXPECT_TRUE(message.starts_with("Verbindung ist hergestellt!")) << message;
  }

  bool older_ = false;  // which image the device keeps
  // A single point, so that polls are short.
  const TableImages small_ = BuildTableImages(Packed(Office(Point("10100100", "00010002"))),
                                              Packed("0001 Pegel     cm _0002 Abfluss   l/s___"));
  std::mt19937 random_{20261122 + GetParam()};
  Technician user_;
  int brokenOff_ = 0;  // messages by which the user noticed a fault
};

TEST_P(Endurance, ManySessionsLeaveNothingBehind) {
  ConnectDevice();
  long warm = 0;
  for (int session = 1; session <= kSessions; ++session) {
    RunSession();
    ExpectReachable();
    ASSERT_FALSE(HasFailure()) << "session " << session;
    if (session == kWarmUp) warm = heap.kept;
  }
  EXPECT_GT(brokenOff_, kSessions / 33);
  EXPECT_LE(heap.kept, warm + kKeptBytes);
}

INSTANTIATE_TEST_SUITE_P(Part, Endurance, testing::Range(0U, kParts));

}  // namespace
}  // namespace ox::test
