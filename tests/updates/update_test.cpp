// The update windows until the loader is asked for anything: what is loaded, and what an update refuses.
#include <new>

#include "updates/update_rig.h"

namespace ox::test {
namespace {

const std::string kBreaksOff = "/gut.abgebrochen";  // memory runs out while it is loaded
const std::string kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";

struct Choice {
  std::string box;
  std::string path;
  std::string status;  // empty: nothing is loaded
  Strings said;
  bool start = false;
};

/// What each choice leads to, and that nothing is left of it when the window is shown once more.
void ExpectChoices(UpdateRig& rig, const std::vector<Choice>& choices) {
  for (const auto& [box, path, status, said, start] : choices) {
    SCOPED_TRACE(path);
    rig.host.windows.OnMessage([&, cleared = box](const std::string&) {
      EXPECT_TRUE(rig.update == kTables || !rig.Box(cleared).Checked()) << "before the user is told";
    });
    if (path == kBreaksOff) rig.host.windows.In(0, [] { throw std::bad_alloc(); });
    rig.Choose(rig.Box(box), path);
    EXPECT_EQ(rig.host.windows.TakeMessages(), said);
    EXPECT_EQ(rig.Box(box).Checked(), !status.empty());
    EXPECT_EQ(rig.go.Text(), status);
    EXPECT_EQ(rig.The<Label>(box + "Contents").Text().empty(), status.empty());
    EXPECT_EQ(rig.start.Enabled(), start);
  }
  rig.leave.Click();
  EXPECT_FALSE(rig.window->IsOpen());
  rig.host.windows.OpenMain(*rig.window);
  EXPECT_EQ(rig.go.Text(), "");
  EXPECT_FALSE(rig.start.Enabled());
  for (const Choice& choice : choices)
    EXPECT_TRUE(!rig.Box(choice.box).Checked() && rig.The<Label>(choice.box + "Contents").Text().empty());
}

TEST(Update, TablesCanBeWrittenOnceAllThreeAreLoaded) {
  const std::string points = "Messstellentabelle wird geladen ... O.K.!";
  const std::string parameters = "Parameterliste wird geladen ... O.K.!";
  UpdateRig rig(kTables);
  rig.files["/falsch.par"] = "/N/\"1\" ";
  ExpectChoices(
      rig, {{"Mes", "/gut", points, {}},
            {"Par", "/gut", parameters, {}},
            {"Zuo", "/fehlt", "", {"Fehler beim Lesen der Datei: /fehlt.zuo!"}},
            {"Zuo", "/gut", "Zuordnungstabelle wird geladen ... O.K.!", {}, true},
            {"Par", "", "", {}},  // the user clears the box
            {"Par", kBreaksOff, "", {kOutOfMemory}},
            {"Par", "", "", {}},  // he leaves the chooser without a file
            {"Par", "/falsch", "", {"Fehler in Zeile 1, Steuerzeichen /P/ oder /E/ erwartet!\r\r/N/\"1\" "}},
            {"Par", "/gut", parameters, {}, true}});
}

TEST(Update, OnlyAGoodProgramFileCanBeWritten) {
  const std::string loaded = "Programmdatei wird geladen ... O.K.!";
  for (const auto& [update, end] : {std::pair<Update, Bytes>{kProgram2, ".pro"}, {kProgram3, ".pr3"}}) {
    UpdateRig rig(update);
    const Bytes good = rig.files["/gut" + end];
    rig.files["/lang" + end] = good + "x";
    std::vector<Choice> choices{
        {"Pro", "/gut", loaded, {}, true},
        {"Pro", "", "", {}},  // the user clears the box
        {"Pro", kBreaksOff, "", {kOutOfMemory}},
        {"Pro", "", "", {}},  // he leaves the chooser without a file
        {"Pro", "/fehlt", "", {"Datei /fehlt" + end + " fehlerhaft!"}},
        {"Pro", "/lang", "", {"Datei /lang" + end + " fehlerhaft!"}},
    };
    for (const std::size_t wrong : {std::size_t{0}, std::size_t{258}, good.size() - 1}) {  // second record
      const std::string path = "/falsch" + std::to_string(wrong) + end;
      rig.files[path] = good;
      rig.files[path][wrong] ^= '\x80';
      choices.push_back({"Pro", path, "", {"Checksummenfehler in Datei " + path + "!"}});
    }
    choices.push_back({"Pro", "/gut", loaded, {}, true});
    ExpectChoices(rig, choices);
  }
}

TEST(Update, ADroppedFileIsLoadedAsOneThatWasChosenWhateverItReplaces) {
  UpdateRig rig(kTables);
  rig.files["/NEU.MES"] = rig.files["/gut.mes"];
  rig.Load();
  CheckBox& points = rig.Box("Mes");
  EXPECT_TRUE(points.Takes("/NEU.MES") && !points.Takes(".MES") && !rig.Box("Par").Takes("/NEU.MES"));
  EXPECT_TRUE(points.TakesFiles() && rig.Box("Par").Takes("/NEU.PAR") && rig.Box("Zuo").Takes("/NEU.ZUO"));
  rig.host.windows.In(0, [&] {
    EXPECT_EQ(rig.The<Label>("MesContents").Text(), "");
    throw std::bad_alloc();
  });
  points.Drop("/NEU.MES");
  EXPECT_FALSE(points.Checked() || rig.start.Enabled());
  points.Drop("/NEU.MES");
  EXPECT_EQ(rig.go.Text(), "Messstellentabelle wird geladen ... O.K.!");
  EXPECT_TRUE(points.Checked() && rig.start.Enabled());
  points.Drop("/fehlt.mes");
  EXPECT_EQ(rig.host.windows.TakeMessages(),
            (Strings{kOutOfMemory, "Fehler beim Lesen der Datei: /fehlt.mes!"}));
  EXPECT_FALSE(points.Checked() || rig.start.Enabled());
}

TEST(Update, OfTwoChoicesTheLaterCounts) {
  for (const Update update : {kTables, kProgram2}) {
    UpdateRig rig(update);
    CheckBox& box = rig.Box(update == kTables ? "Mes" : "Pro");
    // While a file is loaded that is not there the user takes the box off, and chooses a good one.
    rig.host.windows.In(0, [&] {
      box.Click();
      rig.Choose(box, "/gut");
      rig.leave.Click(), rig.window->RequestClose();
      EXPECT_EQ(rig.The<Label>("Closing").Text(), "") << "no run is on";
    });
    rig.Choose(box, "/fehlt");
    EXPECT_EQ(rig.host.windows.TakeMessages(), Strings{});
    EXPECT_TRUE(box.Checked() && rig.go.Text().ends_with("wird geladen ... O.K.!"));
  }
}

TEST(Update, ShowsWhatWillBeWrittenHowFarItIsAndThatItWillClose) {
  UpdateRig rig(kTables);
  rig.Load();
  const auto& window = dynamic_cast<updatetab&>(*rig.window);
  EXPECT_EQ(window.MesContents.Text(), "gut.mes: Stand Übung 1.26, 3 Ämter, 40 Messstellen");
  EXPECT_EQ(window.Fill2.Text(), "Belegung OX II: 1970 von 16380 Bytes (13 %)");
  EXPECT_EQ(window.Fill3.Text(), "Belegung OX III: 1444 von 16380 Bytes (9 %)");
  const UpdateProgress& shown = window.Progress;
  Strings seen;
  const auto look = [&] {
    const std::string how = !shown.Bar.Visible() ? ""
                            : shown.Bar.Busy()   ? "?"
                                                 : std::to_string(shown.Bar.Percent());
    seen.push_back(how + "|" + shown.Step.Text() + "|" + shown.Rest.Text() + "|" + shown.Closing.Text());
  };
  look();
  rig.Connect(DeviceOf(2, "a"));
  rig.device->Faults().Observe([&, blocks = 0](const sim::ReplyOrigin& origin) mutable {
    if (origin.stage != sim::ReplyStage::kLoaderReply) return;
    const double delay = origin.letter == '2' ? 4 : origin.letter == 'P' ? 0.15 : 0;
    rig.device->Faults().Add({.kind = sim::ReplyFault::Kind::kLate, .delay = delay});
    if (origin.letter == '2') rig.host.windows.In(1.5, look);
    if (origin.letter != 'P' || (++blocks > 1 && blocks < 34)) return;
    if (blocks == 1) rig.host.windows.In(0, look);
    if (blocks == 34) rig.host.windows.In(0.12, [&] { rig.window->RequestClose(), look(); });
    if (blocks % 60 == 0) rig.host.ports.Break();
  });
  rig.host.windows.OnMessage([&](const std::string&) { EXPECT_FALSE(shown.Beat.Enabled()); });
  rig.start.Click();
  look();
  rig.host.ports.Mend(), rig.host.windows.In(0.5, look);
  rig.start.Click();
  rig.Box("Mes").Click();  // the user clears the box
  rig.host.windows.In(0, [&] {
    EXPECT_EQ(rig.go.Text(), "Messstellentabelle wird geladen ...");
    rig.window->RequestClose(), look();
  });
  rig.Choose(rig.Box("Mes"), "/gut");
  const std::string sending = "|Tabellen werden übertragen ...|noch ";
  const std::string closing = "Fenster schließt nach erfolgreicher Programmierung";
  EXPECT_EQ(seen,
            (Strings{"|||", "?|Gerät bereitet sich vor ...|seit 1 s|", "0" + sending + "9 s|",
                     "51" + sending + "5 s|" + closing, "|||", "?|Verbindung wird geprüft ...||", "|||"}));
  EXPECT_FALSE(shown.Beat.Enabled());
}

TEST(Update, ThatMemoryRunsOutOnKeepsItsWindow) {
  for (const Update update : {kTables, kProgram2}) {
    UpdateRig rig(update);
    rig.Load();
    rig.host.windows.In(0.1, [&] { rig.leave.Click(), rig.window->RequestClose(); });
    rig.host.windows.In(0.2, [] { throw std::bad_alloc(); });
    rig.start.Click();
    EXPECT_EQ(rig.host.windows.TakeMessages(), Strings{kOutOfMemory});
    EXPECT_TRUE(rig.window->IsOpen() && rig.start.Enabled() && rig.leave.Enabled());
    EXPECT_TRUE(rig.host.ports.OpenCount() == 0 && rig.The<Label>("Closing").Text().empty());
  }
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
  const std::string unassigned = "Warnung: Zur Messstellennummer 10100100 wurde keine Zuordnung gefunden!";
  sim::DeviceOptions oldDevice = DeviceOf(2);
  oldDevice.type = "OX02";
  const struct {
    Update update;
    std::optional<sim::DeviceOptions> device;
    std::string said;
    // What is another text in one of the files.
    std::string file = {};
    Bytes replaced = {}, by = {};
  } rows[] = {
      // Before anything is sent: that there is no device is not noticed.
      {kTables, {}, "Abbruch(2): Parameterliste leer!", "/gut.par", "/P/", "/E/"},
      {kTables, {}, unassigned, "/gut.zuo", "10100100", "10100101"},
      {kTables, {}, "Abbruch: Überlauffehler der Tabellen OX3!", "/gut.zuo", "0005,", Times(8192, "0005,")},
      {kTables, {}, "Abbruch: Überlauffehler der Tabellen!", "/gut.zuo", "0005,", Times(4096, "0005,")},
      {kTables, oldDevice, oldSoftware},
      // An office that generation III does not take; known before a device is sent into its loader.
      {kTables, DeviceOf(3, "bc"), "Abbruch: Tabellen OX3 fehlerhaft!", "/gut.mes", "\"101", "\"1A1"},
      {kTables, DeviceOf(3, "c", true), "Abbruch: Tabellen OX3 fehlerhaft!", "/gut.mes", "\"101", "\"1A1"},
      {kProgram2, DeviceOf(1), kGeneration1},
      {kProgram2, DeviceOf(3), hint},
      {kProgram3, DeviceOf(3, "c", true), noDevice},
      {kProgram3, DeviceOf(2), changed},
  };
  for (const auto& row : rows) {
    UpdateRig rig(row.update);
    Bytes& text = rig.files[row.file];
    text.replace(text.find(row.replaced), row.replaced.size(), row.by);
    rig.Load();
    if (row.said.starts_with("Abbruch(2)")) {
      EXPECT_EQ(rig.The<Label>("Fill2").Text(), "Die Tabellen passen nicht zusammen");
    }
    if (row.device) rig.Connect(*row.device);
    rig.host.windows.CancelNext();
    EXPECT_EQ(rig.Start(), Strings{row.said});
    for (const char* spoils : {"@UPDATEREQ", "0\x13", "1\x13", "2\x13"})
      EXPECT_EQ(rig.host.ports.sent.find(spoils), Bytes::npos) << row.said;
  }
}

TEST(Update, AProgramThatIsToEndEndsBehindItsRunHoweverThatEnds) {
  for (const Update update : {kTables, kProgram3}) {
    for (const bool refused : {false, true}) {
      UpdateRig rig(update);
      rig.Load();
      rig.Connect(DeviceOf(3, "c"));
      rig.device->Faults().Observe([&](const sim::ReplyOrigin& origin) {
        if (origin.letter != 'P' || !rig.host.awake.Held()) return;
        rig.host.windows.RequestEnd();
        if (refused) rig.device->Faults().Add({.kind = sim::ReplyFault::Kind::kSilence});
      });
      rig.start.Click();
      EXPECT_EQ(rig.host.windows.TakeMessages() == Strings{rig.success}, !refused);
      EXPECT_FALSE(rig.window->IsOpen() || rig.host.awake.Held());
      EXPECT_EQ(rig.device->LoaderRunning(), refused);
    }
  }
}

TEST(Update, AfterAPowerFailureTheNextAttemptFindsWhatIsLeftAndSucceeds) {
  for (const Update which : {kTables, kProgram2}) {
    UpdateRig rig(which);
    rig.Load();
    sim::DeviceOptions options = DeviceOf(2, "a");
    rig.Connect(options);
    rig.device->Faults().Observe([&, blocks = 0](const sim::ReplyOrigin& origin) mutable {
      if (origin.letter == 'P' && ++blocks == 10) rig.device->SwitchOff();
    });
    EXPECT_NE(rig.Start(), Strings{rig.success});
    options.memory = rig.device->Memory().Contents();
    rig.Connect(options);
    EXPECT_EQ(rig.device->LoaderRunning(), which == kProgram2) << "without a program there is no dialogue";
    EXPECT_TRUE(rig.device->Stations().offices.empty());
    EXPECT_EQ(rig.Start(), Strings{rig.success});
    rig.device->SwitchOff();
    rig.device->SwitchOn();
    EXPECT_FALSE(rig.device->LoaderRunning());
    EXPECT_EQ(rig.device->Stations().offices.size(), which == kTables ? 3U : 0U);
  }
}

}  // namespace
}  // namespace ox::test
