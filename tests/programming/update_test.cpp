// The update windows until the loader is asked for anything: what is loaded, and what an update refuses.
#include <new>

#include "app/messages.h"
#include "programming/update_rig.h"

namespace ox::test {
namespace {

const std::string kBreaksOff = "/gut.abgebrochen";  // memory runs out while it is loaded
const std::string kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";

struct Choice {
  std::size_t box;
  std::string path;
  std::string status;  // empty: nothing is loaded
  Strings said;
  bool start = false;
};

void ExpectChoices(UpdateRig& rig, const std::vector<Choice>& choices) {
  const auto expectShown = [&rig](const CheckBox& box, const std::string& status, bool start) {
    EXPECT_EQ(box.Checked(), !status.empty());
    EXPECT_EQ(rig.window->Go.Text(), status);
    EXPECT_EQ(rig.start.Enabled(), start);
  };
  for (const Choice& choice : choices) {
    SCOPED_TRACE(choice.path);
    if (choice.path == kBreaksOff) rig.host.windows.In(0, [] { throw std::bad_alloc(); });
    rig.Choose(rig.Box(choice.box), choice.path);
    EXPECT_EQ(rig.host.windows.TakeMessages(), choice.said);
    expectShown(rig.Box(choice.box), choice.status, choice.start);
  }
  rig.leave.Click();
  EXPECT_FALSE(rig.window->IsOpen());
  rig.host.windows.OpenMain(*rig.window);
  for (const Choice& choice : choices) expectShown(rig.Box(choice.box), "", false);
}

TEST(Update, TablesCanBeWrittenOnceAllThreeAreLoaded) {
  const std::string points = "Messstellentabelle wird geladen ... O.K.!";
  const std::string parameters = "Parameterliste wird geladen ... O.K.!";
  UpdateRig rig(kTables);
  rig.files["/falsch.par"] = "/N/\"1\" ";
  const std::vector<Choice> choices{
      {0, "", "", {}},
      {0, "/gut", points, {}},
      {1, "/gut", parameters, {}},
      {2, "/fehlt", "", {"Fehler beim Lesen der Datei: /fehlt.zuo!"}},
      {2, "/gut", "Zuordnungstabelle wird geladen ... O.K.!", {}, true},
      {1, "", "", {}},
      {1, "/falsch", "", {"Fehler in Zeile 1, Steuerzeichen /P/ oder /E/ erwartet!\r\r/N/\"1\" "}},
      {1, "/gut", parameters, {}, true},
      {0, "", "", {}},
      {0, kBreaksOff, "", {kOutOfMemory}},
      {0, "/gut", points, {}, true},
  };
  ExpectChoices(rig, choices);
}

TEST(Update, OnlyAGoodProgramFileCanBeWritten) {
  for (const auto& [update, end] : {std::pair<Update, Bytes>{kProgram2, ".pro"}, {kProgram3, ".pr3"}}) {
    UpdateRig rig(update);
    const Bytes good = rig.files["/gut" + end];
    rig.files["/kurz" + end] = good.substr(1);
    rig.files["/lang" + end] = good + "x";
    std::vector<std::pair<std::string, Strings>> bad{{"", {}},
                                                     {kBreaksOff, {kOutOfMemory}},
                                                     {"/fehlt", {"Datei /fehlt" + end + " fehlerhaft!"}},
                                                     {"/kurz", {"Datei /kurz" + end + " fehlerhaft!"}},
                                                     {"/lang", {"Datei /lang" + end + " fehlerhaft!"}}};
    // One byte changed in each record, all the way through a record.
    for (std::size_t at = 0; at < good.size(); at += 259) {
      const std::string path = "/falsch" + std::to_string(at) + end;
      rig.files[path] = good;
      rig.files[path][at] ^= '\x80';
      bad.push_back({path, {"Checksummenfehler in Datei " + path + "!"}});
    }
    std::vector<Choice> choices;
    for (const auto& [path, said] : bad) {
      choices.push_back({0, path, "", said});
      choices.push_back({0, "/gut", "Programmdatei wird geladen ... O.K.!", {}, true});
      choices.push_back({0, "", "", {}});  // the user clears the box
    }
    ExpectChoices(rig, choices);
  }
}

TEST(Update, OfTwoChoicesTheLaterCounts) {
  for (const Update update : {kTables, kProgram2, kProgram3}) {
    UpdateRig rig(update);
    rig.Load();
    CheckBox& box = rig.Box(0);
    box.Click();
    // While a file is loaded that is not there the user takes the box off, and chooses a good one.
    rig.host.windows.In(0, [&] {
      box.Click();
      rig.Choose(box, "/gut");
    });
    rig.Choose(box, "/fehlt");
    EXPECT_EQ(rig.host.windows.TakeMessages(), Strings{});
    EXPECT_TRUE(rig.window->Go.Text().ends_with("wird geladen ... O.K.!"));
    EXPECT_TRUE(box.Checked() && rig.start.Enabled());
  }
}

Bytes Replaced(Bytes text, const Bytes& from, const Bytes& to) {
  return text.replace(text.find(from), from.size(), to);
}

/// A text for each of so many points.
Bytes Each(int points, const Bytes& before, const Bytes& after) {
  Bytes all;
  while (points-- > 0) all += before + std::to_string(10000000 + points) + after;
  return all;
}

TEST(Update, RefusesTablesAndDevicesThatDoNotSuit) {
  const std::string hint =
      "Zum Programmupdate der Orvanexe II mit SW-Stand vor 3.0\r\n"
      "muss zuvor am Gerät der Programmiermodus eingestellt werden!\r\n"
      "Hierzu ist es bei gedrückten Pfeiltasten einzuschalten.";
  const std::string noDevice =
      "Verbindung mit Orvanexe II konnte nicht hergestellt werden.\r\n"
      "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
      "COM-Port angeschlossen und eingeschaltet ist!\r\n\r\n" +
      hint;
  const std::string changed =
      "Abbruch: Gerätewechsel während der Programmierung nicht zulässig !" + kAskTheMaker;
  const std::string oldSoftware =
      "Hinweis: Orvanexen mit einem SW-Stand vor 3.0\r\n"
      "können mit diesem Programm keine neue Messstellentabelle\r\n"
      "erhalten!";
  const std::string unknownParameter =
      "Abbruch: Die Parameternummer 0077 wird in der Zuordnungstabelle verwendet, ist in der Parameterliste "
      "aber nicht definiert!";
  const std::string unassigned = "Warnung: Zur Messstellennummer 10100100 wurde keine Zuordnung gefunden!";
  const Bytes mes = DemoFile("netz.mes"), zuo = DemoFile("netz.zuo");
  const auto points = [&](int count) {
    return Replaced(mes, "/N/", Each(count, "/N/\"", R"(" /D/" 0000" /M/" 0000" /T/"P" )") + "/N/");
  };
  const auto assignments = [&](int count) { return Each(count, "/N/\"", "\" /P/\"0001\"\n") + zuo; };
  // An office that generation III does not take.
  const Bytes otherOffice = Replaced(mes, "\"101\"", "\"1A1\"");
  sim::DeviceOptions oldDevice = DeviceOf(2);
  oldDevice.type = "AL 2";
  const struct {
    Update update;
    std::optional<sim::DeviceOptions> device;
    std::string said;
    Bytes mes = {}, zuo = {};
  } rows[] = {
      // Before anything is sent: that there is no device is not noticed.
      {kTables, {}, unknownParameter, mes, Replaced(zuo, "0005,0004", "0005,0077")},
      {kTables, {}, unassigned, mes, Replaced(zuo, "\"10100100\"", "\"10100101\"")},
      {kTables, {}, "Abbruch: Überlauffehler der Tabellen OX3!", points(750), assignments(750)},
      {kTables, {}, "Abbruch: Überlauffehler der Tabellen!", points(520), assignments(520)},
      {kTables, {}, std::string(kConnectionMessage), mes, zuo},
      {kTables, oldDevice, oldSoftware, mes, zuo},
      {kTables, DeviceOf(3, "c", true), "Abbruch: Tabellen OX3 fehlerhaft!", otherOffice, zuo},
      {kTables, DeviceOf(2, "a", true), "Tabellenupdate erfolgreich abgeschlossen!", otherOffice, zuo},
      {kProgram2, {}, noDevice},
      {kProgram2, DeviceOf(1), kGeneration1},
      {kProgram2, DeviceOf(3), hint},
      {kProgram3, {}, noDevice},
      {kProgram3, DeviceOf(3, "c", true), noDevice},
      {kProgram3, DeviceOf(1), changed},
      {kProgram3, DeviceOf(2), changed},
  };
  for (const auto& row : rows) {
    UpdateRig rig(row.update);
    rig.files["/gut.mes"] = row.mes;
    rig.files["/gut.zuo"] = row.zuo;
    rig.Load();
    if (row.device) rig.Connect(*row.device);
    rig.host.windows.Answer({Answer::Cancel});
    EXPECT_EQ(rig.Start(), Strings{row.said});
    EXPECT_EQ(rig.host.ports.Sent().find("@UPDATEREQ"), Bytes::npos) << row.said;
    EXPECT_EQ(rig.host.ports.Sent().find("2\x13") == Bytes::npos, row.said != rig.success);
  }
}

}  // namespace
}  // namespace ox::test
