// The support log: what stands in it, when it is handed over, and what becomes of old and of full ones.
#include "journal/journaled_host.h"

#include "journal/journal_folder.h"
#include "support/expected_text.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

const std::string kFolder = "/arbeit/Protokoll/";
const std::string kFirst = kFolder + "2026-11-16_10-00-00.log";

struct Logged : TestHost {
  Logged() { files.content[kFolder + "liesmich.txt"]; }

  void Begin() {
    journal.emplace(files, clock, "Orvanexe Service 4.0.0 (0123456789)",
                    [this](const std::string& trouble) { troubles.push_back(trouble); });
    logged.emplace(host, *journal);
    port = logged->ports.Create();
  }
  void End() {
    port.reset();
    logged.reset();
    journal.reset();
  }
  bool Ends(const std::string& line) { return Log().ends_with(line + "\n"); }
  Bytes Log() { return files.content.contains(kFirst) ? files.content.at(kFirst) : "-"; }

  std::optional<Journal> journal;
  std::optional<JournaledHost> logged;
  std::unique_ptr<SerialPort> port;
  Strings troubles;
};

TEST(Journal, TellsWhatHappensWithItsTime) {
  Logged desk;
  ScriptedDevice device;
  device
      .Expect("S", {{0.020, "A"},
                    {0.030, "\x7F~\"<>\x01"},
                    {0.041, "B"},
                    {0.055, Bytes(9, 'y')},
                    {0.056, Bytes(504, 'y')}})
      .Expect("K");
  desk.clock.Advance(0.5);  // the log counts from its own beginning
  desk.Begin();
  SerialPort& port = *desk.port;
  port.SetSettings("9600,O,7,1");
  port.SetCommPort(2);
  EXPECT_THROW(port.Open(), PortError);
  desk.ports.Connect(2, &device);
  desk.portList.ports[2] = {.device = "/dev/ttyUSB0", .product = "Adapter Ö", .holder = ""};
  port.Open();
  port.SetModemLine(true);
  port.SetModemLine(false);
  desk.clock.Advance(1.5);
  port.Output("S");
  for (int read = 0; read < 60; ++read, desk.clock.Advance(0.001)) port.Input();
  port.Output(Bytes(513, 'x'));
  port.Close();
  port.Open();
  desk.ports.Break();
  EXPECT_THROW(port.Output("K\r"), PortError);
  EXPECT_TRUE(desk.Ends("abgerissen \"\" \"not open or broken\""));
  EXPECT_THROW(port.Input(), PortError);
  desk.ports.Mend(), port.Open();
  desk.windows.CancelNext();
  desk.logged->windows.ShowMessage("Weiter?\r\n" + std::string(1990, 'm') + "ÖÖ", Buttons::kOkCancel);
  Window modem(desk.logged->windows, "Modem", "Test À");
  desk.windows.OnShown("Modem", [&](Window& shown) {
    desk.logged->windows.ShowMessage(std::string(2000, '!'));
    shown.RequestClose();
  });
  desk.logged->windows.ShowModal(modem);
  EXPECT_TRUE(desk.Ends("Fenster zu \"Modem\""));
  desk.logged->windows.AskWhereToSave("werte", {{"Text", "txt"}}, {});
  EXPECT_EQ(desk.windows.Proposed(), "werte Text (txt)");
  desk.End();
  ExpectFile("journal/log.txt", desk.Log());
}

TEST(Journal, IsHandedOverAfterAQuarterSecondAndWhereTheWorkPauses) {
  Logged desk;
  ScriptedDevice device;
  desk.ports.Connect(1, &device.Expect("S", Bytes("A")));
  desk.Begin();
  desk.port->SetSettings("9600,O,7,1");
  desk.port->Open();
  desk.port->Output("S");
  desk.port->Input();
  desk.logged->windows.Rest();
  EXPECT_TRUE(desk.Ends("begonnen 2026-11-16 10:00:00"));
  desk.clock.Advance(0.25 - desk.clock.Elapsed());
  desk.logged->windows.Yield();
  EXPECT_TRUE(desk.Ends("begonnen 2026-11-16 10:00:00")) << "a device may wait for its acknowledgement";
  desk.logged->windows.Rest();
  EXPECT_NE(desk.Log().find(" COM1 ist "), Bytes::npos) << "also the first of all ports";
  EXPECT_TRUE(desk.Ends("COM1 < \"A\""));
  desk.windows.OnMessage([&](const std::string&) { EXPECT_TRUE(desk.Ends("Meldung \"!\" OK")); });
  desk.logged->windows.ShowMessage("!");
  desk.journal->Note({{"x"}});
  desk.logged->windows.Rest();
  EXPECT_FALSE(desk.Ends("x"));
  Window(desk.logged->windows, "Modem", "").Run([] {});
  EXPECT_TRUE(desk.Ends("x")) << "its port stays open";
  desk.port->Close();
  EXPECT_TRUE(desk.Ends("COM1 zu"));
  desk.logged->windows.EndProgram();
  EXPECT_TRUE(desk.Ends("Ende, Einstellungen nicht gespeichert"));
  EXPECT_TRUE(desk.windows.Ended());
  desk.journal->Note({{std::string_view(kFirst.data(), kFirst.max_size())}});
  EXPECT_EQ(desk.troubles, Strings{"Das Protokoll endet hier: nicht genügend Speicher."});
}

TEST(Journal, IsLeftOutWithAWordWhereItCannotBeKeptAndNeverHarmsTheWork) {
  const std::string path = "/arbeit/Protokoll";
  const auto take = [](MemoryFiles& files, int names) {
    for (int name = 2; name <= names; ++name)
      files.content[kFolder + "2026-11-16_10-00-00_" + std::to_string(name) + ".log"];
    files.content[kFirst];
  };
  const std::pair<const char*, std::function<void(MemoryFiles&)>> rows[] = {
      {"no folder", [](MemoryFiles& files) { files.content.clear(), files.content["/arbeit/x"]; }},
      {"a file", [&](MemoryFiles& files) { files.content.clear(), files.content[path]; }},
      {"a link to nowhere", [&](MemoryFiles& files) { files.content.clear(), files.links[path] = "/fehlt"; }},
      {"not to be read", [&](MemoryFiles& files) { files.unreadable.insert(path); }},
      {"not to be written", [](MemoryFiles& files) { files.writable = false; }},
      {"full", [](MemoryFiles& files) { files.appendable = 0; }},
      {"full later", [](MemoryFiles& files) { files.appendable = 2; }},
      {"one name of the second free", [&](MemoryFiles& files) { take(files, 98); }},
      {"none", [&](MemoryFiles& files) { take(files, 99); }}};
  std::string seen;
  for (const auto& [name, make] : rows) {
    Logged desk;
    make(desk.files);
    desk.Begin();
    for (int session = 0; session < 3; ++session) {
      desk.port->SetCommPort(1);
      desk.port->SetSettings("9600,O,7,1");
      desk.port->Open();
      desk.port->Output("S");
      desk.port->Close();
    }
    EXPECT_EQ(desk.ports.sent, "SSS") << name;
    seen += name + std::string(desk.Log() != "-" ? ": begun, " : ": not begun, ") +
            std::to_string(desk.files.openForAppending) + " left open\n";
    for (const std::string& trouble : desk.troubles) seen += "  " + trouble + "\n";
  }
  ExpectFile("journal/left_out.txt", seen);
}

TEST(Journal, OldOnesGoAndOneThatIsLargeGoesOnInANewFile) {
  Logged desk;
  const auto keep = [&](const std::string& name, std::size_t size) {
    desk.files.content[kFolder + name] = Bytes(size, 'x');
  };
  for (int year = 1900; year < 2020; ++year) keep(std::to_string(year) + "-01-01_00-00-00.log", 10);
  for (const char* other : {"1800-01-01_00-00-00.text", "Juli-01-01_00-00-00.log",
                            "2025-01-01_00-00-00_Kunde.log", "2025-01-01_00-00-00_02.log"})
    keep(other, 10);
  for (const char* number : {"_2", "_10", "_99"})
    keep("2000-01-01_00-00-00" + std::string(number) + ".log", 10);
  keep("2020-01-01_00-00-00_2.log", kMostJournalBytes - kLargestJournal - 210);
  keep("2026-11-16_10-00-00.log", 0);
  desk.Begin();
  desk.journal->NoteReceived("1", "r"), desk.journal->NoteOpening("1", "");
  // 21 of 10 bytes, the large one, the empty one and the new one; five are no logs.
  EXPECT_EQ(desk.files.content.size(), 29U);
  EXPECT_FALSE(desk.files.content.contains(kFolder + "2000-01-01_00-00-00_2.log"));
  EXPECT_TRUE(desk.files.content.contains(kFolder + "2000-01-01_00-00-00_10.log"));
  desk.files.content.erase(kFolder + "2020-01-01_00-00-00_2.log");
  const std::string block(100'000, 'b');
  for (std::size_t noted = 0; noted < kLargestJournal; noted += block.size()) desk.journal->Note({{block}});
  desk.clock.Advance(5);
  desk.journal->NoteOpening("2", ""), desk.journal->NoteReceived("2", "r");
  desk.End();
  const Bytes first = desk.files.content.at(kFolder + "2026-11-16_10-00-00_2.log");
  const Bytes second = desk.files.content.at(kFolder + "2026-11-16_10-00-00_3.log");
  EXPECT_NE(first.find("        0 1 < \"r\"\n        0 1 Öffnung 1 \"\"\n"), Bytes::npos);
  EXPECT_LT(first.size(), kLargestJournal + 100'000);
  EXPECT_NE(second.find(" begonnen 2026-11-16 10:00:00\n"), Bytes::npos);
  EXPECT_TRUE(second.ends_with("     5000 2 Öffnung 1 \"\"\n     5000 2 < \"r\"\n     5000 Ende\n"));

  Logged many;
  for (int year = 1900; year < 2020; ++year)
    many.files.content[kFolder + std::to_string(year) + "-01-01_00-00-00.log"];
  many.Begin();
  EXPECT_EQ(many.files.content.size(), 101U) << "and the note";
}

}  // namespace
}  // namespace ox::test
