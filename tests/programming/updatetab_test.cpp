// The table update window: loading tables, whole updates, limits, messages and closing.
#include "programming/updatetab.h"

#include <gtest/gtest.h>

#include <new>
#include <sstream>

#include "app/messages.h"
#include "link/device_link.h"
#include "platform/text.h"
#include "programming/table_update_rig.h"
#include "tables/linking.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_text.h"
#include "tables/zuo_table.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

const std::string kSuccess = "Tabellenupdate erfolgreich abgeschlossen!";

class SilentMessages : public TableMessages {
 public:
  void Show(const Bytes& text) override { ADD_FAILURE() << text; }
  bool Confirm(const Bytes&) override { return true; }
};

TableImages ImagesOf(const TableTexts& tables) {
  SilentMessages messages;
  const auto text = [](const Bytes& content) { return BuildTableText(FileTextToBytes(content)); };
  const Bytes linked = AttachAssignments(ParseMesTable(text(tables.mes), messages),
                                         ParseZuoTable(text(tables.zuo), messages), messages);
  return BuildTableImages(linked, ParseParTable(text(tables.par), messages));
}

/// So many points, each with the one parameter.
TableTexts TablesOf(int points) {
  std::ostringstream mes;
  std::ostringstream zuo;
  mes << R"(/S/"1" /A/"Amt" /Z/"123")";
  for (int number = 10000000; number < 10000000 + points; ++number) {
    mes << "\n/N/\"" << number << R"(" /D/" 0000" /M/" 0000" /T/"P")";
    zuo << "/N/\"" << number << "\" /P/\"0001\"\n";
  }
  return {mes.str() + "\n/B/ Ende\n/E/ ", kSmallTables.par, zuo.str() + "/E/ "};
}

TableTexts With(TableTexts tables, const std::string& from, const std::string& to) {
  for (Bytes* text : {&tables.mes, &tables.par, &tables.zuo}) {
    if (const auto at = text->find(from); at != Bytes::npos) text->replace(at, from.size(), to);
  }
  return tables;
}

class UpdateTables : public testing::Test, protected TableUpdateRig {
 protected:
  Strings Start() {
    host.ports.ForgetSent();
    window.TabStart.Click();
    EXPECT_EQ(host.ports.OpenCount(), 0);
    for (const Control* control : window.Controls()) EXPECT_TRUE(control->Enabled()) << control->Name();
    return host.windows.TakeMessages();
  }

  bool Sent(BytesView request) const { return host.ports.Sent().find(request) != Bytes::npos; }
};

TEST_F(UpdateTables, LoadsATableWhenItsBoxIsSetAndStartsOnlyWithAllThree) {
  EXPECT_FALSE(window.TabStart.Enabled());
  host.files.content["/a.mes"] = kSmallTables.mes;
  host.files.content["/a.par"] = kSmallTables.par;
  host.files.content["/a.zuo"] = kSmallTables.zuo;
  struct Step {
    CheckBox& box;
    const char* path;
    bool checked;
    const char* status;
    Strings messages;
    bool start;
  };
  for (const Step& step : {
           Step{window.ChMes, "", false, "", {}, false},
           Step{window.ChMes, "/a", true, "Messstellentabelle wird geladen ... O.K.!", {}, false},
           Step{window.ChPar, "/a", true, "Parameterliste wird geladen ... O.K.!", {}, false},
           Step{window.ChZuo, "/b", false, "", {"Fehler beim Lesen der Datei: /b.zuo!"}, false},
           Step{window.ChZuo, "/a", true, "Zuordnungstabelle wird geladen ... O.K.!", {}, true},
           Step{window.ChPar, "/a", false, "", {}, false},
           Step{window.ChPar, "/a.mes", false, "", {"Fehler in Zeile"}, false},
           Step{window.ChPar, "/a", true, "Parameterliste wird geladen ... O.K.!", {}, true},
       }) {
    Choose(step.box, step.path);
    EXPECT_EQ(step.box.Checked(), step.checked) << step.path;
    EXPECT_EQ(window.Go.Text(), step.status);
    EXPECT_EQ(window.TabStart.Enabled(), step.start);
    const Strings messages = host.windows.TakeMessages();
    ASSERT_EQ(messages.size(), step.messages.size());
    EXPECT_TRUE(messages.empty() || messages[0].starts_with(step.messages[0])) << messages[0];
  }
}

TEST_F(UpdateTables, ATableWhoseLoadingBreaksOffIsNotLoaded) {
  Load(kSmallTables);
  window.ChPar.Click();
  host.windows.In(0, [] { throw std::bad_alloc(); });
  Choose(window.ChPar, "/netz.par");
  EXPECT_EQ(host.windows.TakeMessages(), Strings{"Nicht genügend Speicher: Vorgang abgebrochen!"});
  EXPECT_FALSE(window.ChPar.Checked());
  EXPECT_FALSE(window.TabStart.Enabled());
  EXPECT_EQ(window.Go.Text(), "");
}

TEST_F(UpdateTables, WritesItsImageIntoEveryKindOfDeviceWhichThenAnswersPollsFromIt) {
  const TableImages images = ImagesOf(DemoTables());
  Load(DemoTables());
  for (const char kind : {'a', 'b', 'c'}) {
    for (const bool inLoader : {false, true}) {
      SCOPED_TRACE(Bytes(1, kind) + (inLoader ? " in its loader" : ""));
      sim::DeviceOptions options = DeviceOfKind(kind);
      options.startInLoader = inLoader;
      Connect(options);
      // Open, two marks on the way into the loader, one for the erasing, one for every second block.
      const Bytes marks(1 + (inLoader ? 0 : 2) + 1 + 32, '>');
      host.windows.OnMessage([&](const std::string&) {
        EXPECT_EQ(window.Go.Text(), marks);
        EXPECT_EQ(host.ports.OpenCount(), 0);
      });
      Bytes requests;
      device->Faults().Observe([&](const sim::ReplyOrigin& origin) {
        if (origin.stage == sim::ReplyStage::LoaderReply) requests += origin.letter;
      });
      EXPECT_EQ(Start(), Strings{kSuccess});
      const Bytes kinds = Bytes("abc").substr(0, Bytes("abc").find(kind) + 1);
      EXPECT_EQ(requests, (inLoader ? "V" : "W") + kinds + "2" + Bytes(64, 'P') + "WLX");
      EXPECT_EQ(window.Go.Text(), "");
      EXPECT_EQ(device->Memory().Tables(), (kind == 'a' ? images.older : images.generation3).bytes);

      Window polling(host.windows, "Polling", "");
      TextBox trace(polling, "trace");
      DeviceLink link(host.host, subs.settings, trace);
      device->Faults().Observe(nullptr);
      const Bytes reply = link.DeviceDialogue("P", true);
      EXPECT_NE(reply.find("10100100"), Bytes::npos);
      EXPECT_NE(reply.find("12345678"), Bytes::npos);
      EXPECT_EQ(device->Stations().offices.size(), 3U);
    }
  }
}

TEST_F(UpdateTables, ChecksTheTablesBeforeAnythingIsSent) {
  const std::string kWarning = "Warnung: Zur Messstellennummer 00000002 wurde keine Zuordnung gefunden!";
  struct Case {
    TableTexts tables;
    Strings messages;
  };
  Connect(DeviceOfKind('a'));
  for (const Case& c : {
           Case{With(kSmallTables, "0001,0002", "0001,0007"),
                {"Abbruch: Die Parameternummer 0007 wird in der Zuordnungstabelle verwendet, ist in der "
                 "Parameterliste aber nicht definiert!"}},
           Case{With(kSmallTables, "/N/\"00000002\" /P", "/N/\"00000003\" /P"), {kWarning}},
           Case{TablesOf(1001), {"Abbruch: Überlauffehler der Tabellen OX3!"}},
           Case{TablesOf(750), {"Abbruch: Überlauffehler der Tabellen OX3!"}},
           Case{TablesOf(600), {"Abbruch: Überlauffehler der Tabellen!"}},
       }) {
    for (CheckBox* box : {&window.ChMes, &window.ChPar, &window.ChZuo}) box->SetChecked(false);
    Load(c.tables);
    host.windows.Answer({ox::Answer::Cancel});
    EXPECT_EQ(Start(), c.messages);
    EXPECT_EQ(host.ports.Sent(), "");
  }
}

TEST_F(UpdateTables, TellsADeviceNothingThatWantsTheImageWhichCannotBeBuilt) {
  Load(With(kSmallTables, "\"123\"", "\"1A3\""));
  Connect(DeviceOfKind('c'));
  EXPECT_EQ(Start(), Strings{"Abbruch: Tabellen OX3 fehlerhaft!"});
  EXPECT_TRUE(host.ports.Sent().ends_with(BytesView("c\x13\x58\0\0\0\0\x32", 8)));
  Connect(DeviceOfKind('a'));
  EXPECT_EQ(Start(), Strings{kSuccess});
  EXPECT_EQ(device->Stations().offices.at(0).code, "1A3");
}

TEST_F(UpdateTables, EndsWithTheMessageOfTheStepThatFailed) {
  const std::string kOldSoftware =
      "Hinweis: Orvanexen mit einem SW-Stand vor 3.0\r\n"
      "können mit diesem Programm keine neue Messstellentabelle\r\n"
      "erhalten!";
  const std::string kUnknownKind =
      "Abbruch: Geräte mit SW-Stand vor 3.0 können so nicht programmiert werden!\r\n"
      "Bitte wenden Sie sich an den Hersteller.";
  Load(kSmallTables);
  const std::string loaded = window.Go.Text();

  host.ports.Remove(1);
  EXPECT_EQ(Start(), Strings{"COM1: lässt sich nicht öffnen!"});
  EXPECT_EQ(window.Go.Text(), loaded);

  host.ports.Connect(1, nullptr);
  EXPECT_EQ(Start(), Strings{std::string(kConnectionMessage)});
  EXPECT_EQ(window.Go.Text(), ">");
  EXPECT_EQ(host.windows.Shown().back(), "Verbindungstest");

  sim::DeviceOptions options = DeviceOfKind('a');
  options.type = "AL 2";
  Connect(options);
  EXPECT_EQ(Start(), Strings{kOldSoftware});
  EXPECT_FALSE(Sent("@UPDATEREQ"));

  options = DeviceOfKind('a');
  options.loaderKinds = "";
  Connect(options);
  EXPECT_EQ(Start(), Strings{kUnknownKind});
  EXPECT_EQ(window.Go.Text(), ">>>");

  Connect(DeviceOfKind('a'));
  device->Faults().Add(
      {.which = {.letter = 'P', .nth = 4}, .kind = sim::ReplyFault::Kind::Replaced, .text = "N"});
  EXPECT_EQ(Start(), Strings{"Abbruch der Programmierung(4): OX antwortet nicht oder falsch!"});
  EXPECT_EQ(window.Go.Text(), ">>>>>>>");
}

TEST_F(UpdateTables, GivesEveryReplyItsTime) {
  constexpr double kMargin = 0.1;
  Load(kSmallTables);
  for (const auto& [letter, seconds] : {std::pair{'W', 1}, {'a', 1}, {'2', 30}, {'P', 3}}) {
    for (const bool late : {false, true}) {
      Connect(DeviceOfKind('a'));
      device->Faults().Add({.which = {.stage = sim::ReplyStage::LoaderReply, .letter = letter},
                            .kind = sim::ReplyFault::Kind::Late,
                            .delay = seconds + (late ? kMargin : -kMargin)});
      EXPECT_EQ(Start() == Strings{kSuccess}, !late) << letter;
    }
  }
}

TEST_F(UpdateTables, TheCloseBoxNeverCutsAnUpdateOff) {
  constexpr double kStep = 0.043;
  double duration = 1;
  int closings = 0;
  for (double moment = 0; moment < duration; moment += kStep, ++closings) {
    TableUpdateRig rig;
    rig.Load(kSmallTables);
    rig.Connect(DeviceOfKind('a'));
    rig.device->Faults().Add({.which = {.times = 1000}, .kind = sim::ReplyFault::Kind::Late, .delay = 0.01});
    const double start = rig.host.clock.Elapsed();
    rig.host.windows.In(moment, [&] { rig.window.RequestClose(); });
    rig.host.windows.OnMessage([&](const std::string&) { EXPECT_TRUE(rig.window.IsOpen()); });
    rig.window.TabStart.Click();
    duration = rig.host.clock.Elapsed() - start;
    EXPECT_EQ(rig.host.windows.TakeMessages(), Strings{kSuccess});
    EXPECT_FALSE(rig.window.IsOpen());
    EXPECT_EQ(rig.host.ports.OpenCount(), 0);
    EXPECT_FALSE(rig.device->LoaderRunning());
  }
  EXPECT_GT(closings, 50);
}

TEST_F(UpdateTables, VerlassenClosesAndTheNextShowingBeginsAnew) {
  Load(kSmallTables);
  window.TabEnd.Click();
  EXPECT_FALSE(window.IsOpen());
  host.windows.OpenMain(window);
  EXPECT_FALSE(window.ChMes.Checked() || window.ChPar.Checked() || window.ChZuo.Checked());
  EXPECT_FALSE(window.TabStart.Enabled());
  EXPECT_EQ(window.Go.Text(), "");
}

}  // namespace
}  // namespace ox::test
