// Every allocation of whole sessions, and so of every parser, fails once: the user is told, and the next
// session goes as if nothing had been.
#include <gtest/gtest.h>

#include <algorithm>

#include "program/heap_meter.h"
#include "program/technician.h"

namespace ox::test {
namespace {

const std::string kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";
const std::string kTablesWritten = "Tabellenupdate erfolgreich abgeschlossen!";
const std::string kProgramWritten = "Programmupdate erfolgreich abgeschlossen!";

struct Session {
  const char* name;
  void (Technician::*run)();
  // What the user is told and shown last where nothing goes wrong; empty for nothing and for anything.
  std::string message;
  std::string shown;
  int generation = 3;
  long stride = 1;  // passes some allocations over where a session has very many
};

void PrintTo(const Session& session, std::ostream* out) {
  *out << session.name;
}

class FailingAllocation : public testing::TestWithParam<std::tuple<Session, Failing>> {};

TEST_P(FailingAllocation, IsToldAndDoesNotHarmTheNextSession) {
  const auto& session = std::get<Session>(GetParam());
  const auto failing = std::get<Failing>(GetParam());
  Technician technician;
  bool failed = true;
  for (long nth = 1; failed; nth += failing == Failing::Once ? session.stride : 5) {
    SCOPED_TRACE("allocation " + std::to_string(nth));
    FailAllocation(nth, failing);
    (technician.*session.run)();
    failed = StopFailing();
    EXPECT_TRUE(failed || nth > 1) << "the session allocates nothing";
    EXPECT_EQ(technician.host.ports.OpenCount(), 0);
    EXPECT_EQ(technician.host.files.openForAppending, 0);
    EXPECT_EQ(std::ranges::count(technician.Messages(), kOutOfMemory) > 0, failed);
    technician.host.windows.Pass(10);
    // A device whose program was written in part is one for the workshop.
    technician.Connect({.generation = session.generation});
    technician.shown.clear();
    (technician.*session.run)();
    const auto messages = technician.Messages();
    EXPECT_EQ(messages.empty() ? "" : messages.back(), session.message);
    EXPECT_TRUE(technician.shown.ends_with(session.shown)) << technician.shown;
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Each, FailingAllocation,
    testing::Combine(testing::Values(Session{"Poll", &Technician::Poll, "", "PC -> OX  A"},
                                     Session{"Monitor", &Technician::Monitor, "", "Entladung"},
                                     Session{"Modem", &Technician::TestModem, "", "PC <- Modem  A"},
                                     Session{"Packer", &Technician::PackFirmware,
                                             "Vorgang erfolgeich beendet !", "", 3, 3},
                                     Session{"Restart", &Technician::Restart, "", ""},
                                     Session{"Tables", &Technician::UpdateTables, kTablesWritten, ""},
                                     Session{"Program2", &Technician::UpdateProgram, kProgramWritten, "", 2},
                                     Session{"Program3", &Technician::UpdateProgram, kProgramWritten, "", 3,
                                             4}),
                     testing::Values(Failing::Once, Failing::FromThenOn)),
    [](const auto& made) {
      const bool once = std::get<Failing>(made.param) == Failing::Once;
      return std::get<Session>(made.param).name + std::string(once ? "Once" : "FromThenOn");
    });

}  // namespace
}  // namespace ox::test
