// A session in the support log, played again: the program's side and the simulator's read the same format.
#include <sstream>

#include "program/technician.h"
#include "simulator/replay/replayed_end.h"

namespace ox::test {
namespace {

void Work(Technician& user) {
  user.TestConnection();
  user.Poll();
  user.Monitor();
  user.UpdateTables();
}

TEST(Replay, TheSameSessionShowsNoDifferenceAndAnotherOneItsFirst) {
  Technician user(true);
  user.Connect({.generation = 3, .baud = 4800, .parity = 'E'});
  Work(user);
  const Strings told = user.Messages();
  ASSERT_EQ(told.back(), "Tabellenupdate erfolgreich abgeschlossen!");
  user.Close(user.Main());
  const Bytes log = user.host.files.content.at("/arbeit/Protokoll/2026-11-16_10-00-00.log");
  const std::tuple<BytesView, BytesView, std::string> changes[] = {
      {"", "", ""},
      {"> \"T\"", "> \"U\"",
       "Öffnung 8, Zeichen 2 (Zeile 56 des Protokolls, 10:00:01,541): erwartet \"U\", gesehen \"T\""},
      {"Öffnung 3 \"2400,O", "Öffnung 3 \"9600,O",
       "Öffnung 3, Zeichen 1 (Zeile 11 des Protokolls, 10:00:01,008): erwartet 9600,O,7,1, gesehen "
       "2400,O,7,1"}};
  for (const auto& [from, to, difference] : changes) {
    Bytes changed = log;
    changed.replace(log.find(from), from.size(), to);
    std::istringstream text(changed);
    sim::ReplayedEnd end(text);
    Technician again;
    again.Connect(end);
    if (difference.empty()) {
      Work(again);
      EXPECT_EQ(again.Messages(), told);
      EXPECT_EQ(again.shown, user.shown);
    } else {
      again.TestConnection();
      again.Poll();
    }
    EXPECT_EQ(end.Difference(), difference);
    EXPECT_TRUE(end.Ended()) << "before line " << end.NextLine();
  }
}

}  // namespace
}  // namespace ox::test
