// Every allocation of whole sessions fails once: the user is told, and the next session goes on unharmed.
#include <algorithm>

#include "program/heap_meter.h"
#include "program/technician.h"

namespace ox::test {
namespace {

struct Session {
  const char* name;
  void (Technician::*run)();
  // What the user is told and shown last where nothing goes wrong; empty for nothing and for anything.
  std::string message = {};
  std::string shown = {};
  int generation = 3;
  long stride = 1;  // passes some allocations over where a session has very many
};

void PrintTo(const Session& session, std::ostream* out) {
  *out << session.name;
}

/// Lets the session's allocations fail one after the other, alone or with all behind it.
void TryAllocations(const Session& session, bool fromThenOn) {
  Technician technician;
  heap.failed = true;
  for (long nth = 1; heap.failed; nth += fromThenOn ? 5 : session.stride) {
    SCOPED_TRACE(session.name + (" " + std::to_string(nth)) + (fromThenOn ? " and all behind" : ""));
    heap = {heap.kept, nth, fromThenOn};
    (technician.*session.run)();
    heap.untilFailure = 0;
    EXPECT_TRUE(heap.failed || nth > 1) << "the session allocates nothing";
    EXPECT_EQ(technician.host.ports.OpenCount() + technician.host.files.openForAppending, 0);
    const bool told =
        std::ranges::count(technician.Messages(), "Nicht genügend Speicher: Vorgang abgebrochen!") > 0;
    EXPECT_EQ(told, heap.failed);
    EXPECT_NE(technician.host.files.content["OX.CFG"].find("\\M\\"), Bytes::npos)
        << "what was not read is lost";
    technician.host.windows.Pass(10);
    // A device whose program was written in part is one for the workshop.
    technician.Connect({.generation = session.generation});
    technician.shown.clear();
    (technician.*session.run)();
    const auto messages = technician.Messages();
    EXPECT_EQ(messages.empty() ? "" : messages.back(), session.message);
    EXPECT_TRUE(technician.shown.ends_with(session.shown)) << technician.shown;
    if (testing::Test::HasFailure()) return;
  }
}

class FailingAllocation : public testing::TestWithParam<Session> {};

TEST_P(FailingAllocation, IsToldAndDoesNotHarmTheNextSession) {
  TryAllocations(GetParam(), false);
  TryAllocations(GetParam(), true);
}

const std::string kTablesDone = "Tabellenupdate erfolgreich abgeschlossen!";
const std::string kProgramDone = "Programmupdate erfolgreich abgeschlossen!";

INSTANTIATE_TEST_SUITE_P(
    During, FailingAllocation,
    testing::Values(Session{"Poll", &Technician::Poll, "", "PC -> OX  A"},
                    Session{"Monitor", &Technician::Monitor, "", "Entladung"},
                    Session{"Modem", &Technician::TestModem, "", "PC <- Modem  A"},
                    Session{"Packer", &Technician::PackFirmware, "Vorgang erfolgeich beendet !", "", 3, 3},
                    Session{"Restart", &Technician::Restart},
                    Session{"Tables", &Technician::UpdateTables, kTablesDone},
                    Session{"Program2", &Technician::UpdateProgram, kProgramDone, "", 2},
                    Session{"Program3", &Technician::UpdateProgram, kProgramDone, "", 3, 4}),
    [](const auto& session) { return session.param.name; });

}  // namespace
}  // namespace ox::test
