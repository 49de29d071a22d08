// Every allocation of the parsers and of whole sessions fails once: the user is told, and nothing is left
// behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <new>

#include "platform/text.h"
#include "program/program_rig.h"
#include "programming/demo_file.h"
#include "programming/firmware_packing.h"
#include "programming/program_file.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_images.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox::test {
namespace {

const std::string kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";

/// Runs the action with its first allocation failing, then with its second and so on until none fails any
/// more; `stride` passes some over. Calls `after` behind every run with what the run returned.
template <class Action, class After>
void FailEach(Failing failing, long stride, const Action& action, const After& after) {
  bool failed = true;
  long runs = 0;
  for (long nth = 1; failed; nth += stride, ++runs) {
    FailAllocation(nth, failing);
    action();
    failed = StopFailing();
    after(failed);
    if (testing::Test::HasFailure()) FAIL() << "allocation " << nth;
  }
  EXPECT_GT(runs, 1) << "the action allocates nothing";
}

// Parsers.

/// A failure leaves by std::bad_alloc and keeps nothing; the run without one gives the result.
void ExpectAllOrNothing(const std::function<Bytes()>& parse) {
  const Bytes whole = parse();
  const long blocks = ProgramHeap().blocks;
  Bytes result;
  FailEach(
      Failing::Once, 1,
      [&] {
        result.clear();
        try {
          const Exposure exposure;
          const Bytes parsed = parse();
          const Shelter shelter;
          result = parsed;
        } catch (const std::bad_alloc&) {
        }
      },
      [&](bool failed) {
        EXPECT_EQ(result, failed ? Bytes() : whole);
        EXPECT_EQ(ProgramHeap().blocks, blocks);
      });
}

class NoMessages : public TableMessages {
 public:
  void Show(const Bytes& text) override { ADD_FAILURE() << text; }
  bool Confirm(const Bytes& text) override {
    ADD_FAILURE() << text;
    return false;
  }
};

TEST(FailingAllocations, Parsers) {
  NoMessages messages;
  const Bytes file = DemoFile("netz.mes");
  const auto text = [](const char* name) { return BuildTableText(FileTextToBytes(DemoFile(name))); };
  const Bytes mes = text("netz.mes"), par = text("netz.par"), zuo = text("netz.zuo");
  const Bytes points = ParseMesTable(mes, messages);
  const Bytes parameters = ParseParTable(par, messages);
  const Bytes assignments = ParseZuoTable(zuo, messages);
  const Bytes linked = AttachAssignments(points, assignments, messages);
  ExpectAllOrNothing([&] { return ParseMesTable(mes, messages); });
  ExpectAllOrNothing([&] { return ParseParTable(par, messages); });
  ExpectAllOrNothing([&] { return ParseZuoTable(zuo, messages); });
  ExpectAllOrNothing([&] { return AttachAssignments(points, assignments, messages); });
  ExpectAllOrNothing([&] { return BuildTableImages(linked, parameters).generation3.bytes; });
  ExpectAllOrNothing([&] { return BuildTableText(FileTextToBytes(file)); });
  const Bytes program = DemoFile("ox3.pr3");
  ExpectAllOrNothing([&] { return ReadProgramFile(program, kProgramFormat3).program; });
}

// Sessions.

class FailingSessions : public testing::TestWithParam<Failing> {
 protected:
  /// Breaks the session at every allocation of the program; behind each failure it must work as at first.
  void Sweep(long stride, const std::function<void()>& session, const std::function<void()>& works) {
    session();
    EXPECT_EQ(std::ranges::count(rig_.Messages(), kOutOfMemory), 0);
    FailEach(GetParam(), stride, session, [&](bool failed) {
      EXPECT_EQ(rig_.host.ports.OpenCount(), 0);
      EXPECT_EQ(rig_.host.files.openForAppending, 0);
      EXPECT_EQ(std::ranges::count(rig_.Messages(), kOutOfMemory) > 0, failed);
      rig_.host.windows.Pass(10);
      works();
    });
  }

  ProgramRig rig_;
};

TEST_P(FailingSessions, Poll) {
  std::string values;
  const auto poll = [&] {
    rig_.Exchange([&](Datenaustausch& window) {
      rig_.Choose(window.duemstwal, "netz");
      rig_.Type(window.MST, "10100100");
      rig_.Click(window.Einzelabruf);
      rig_.Click(window.Zeitabruf);
      values = window.datanz.Text();
    });
  };
  Sweep(1, poll, [&] {
    values.clear();
    poll();
    EXPECT_TRUE(values.ends_with("PC -> OX  A")) << values;
    EXPECT_EQ(rig_.Messages(), std::vector<std::string>{});
  });
}

TEST_P(FailingSessions, TableUpdate) {
  const auto update = [&] { rig_.UpdateTables(); };
  Sweep(1, update, [&] {
    update();
    EXPECT_EQ(rig_.Messages(), std::vector<std::string>{kTablesWritten});
    EXPECT_TRUE(rig_.Device().Memory().TablesSound());
  });
}

TEST_P(FailingSessions, PowerMonitorAndModem) {
  Sweep(
      1, [&] { rig_.Monitor(2); },
      [&] {
        rig_.Monitor(2);
        EXPECT_EQ(rig_.Messages(), std::vector<std::string>{});
      });
  Sweep(
      1, [&] { rig_.TestModem(); }, [] {});
}

TEST_P(FailingSessions, EndAndStartOfTheProgram) {
  const auto restart = [&] {
    rig_.Close(rig_.Main());
    EXPECT_FALSE(rig_.Main().IsOpen()) << "the user could never leave the program";
    rig_.host.windows.OpenMain(rig_.Main());
  };
  Sweep(1, restart, [&] {
    rig_.Click(rig_.Main().MenuVerb);
    EXPECT_TRUE(rig_.Messages().front().starts_with(kConnected));
    EXPECT_TRUE(rig_.Main().IsOpen());
  });
}

INSTANTIATE_TEST_SUITE_P(Once, FailingSessions, testing::Values(Failing::Once));
INSTANTIATE_TEST_SUITE_P(FromThenOn, FailingSessions, testing::Values(Failing::FromThenOn));

}  // namespace
}  // namespace ox::test
