// Choosing and loading what is to be written: boxes, status line, messages.
#include <new>

#include "programming/update_rig.h"

namespace ox::test {
namespace {

const std::string kBreaksOff = "/gut.abgebrochen";  // memory runs out while it is loaded
const std::string kOutOfMemory = "Nicht genügend Speicher: Vorgang abgebrochen!";

struct Choice {
  std::string caption, path;
  std::string status;  // empty: nothing is loaded
  std::string said;
  bool start = false;
};

void ExpectChoices(UpdateRig& rig, const std::vector<Choice>& choices) {
  for (const Choice& choice : choices) {
    auto& box = rig.Captioned<CheckBox>(choice.caption);
    if (choice.path == kBreaksOff) rig.host.windows.In(0, [] { throw std::bad_alloc(); });
    rig.Choose(box, choice.path);
    const Strings said = rig.host.windows.TakeMessages();
    EXPECT_EQ(said, choice.said.empty() ? Strings() : Strings{choice.said});
    EXPECT_EQ(box.Checked(), !choice.status.empty()) << choice.path;
    EXPECT_EQ(rig.window->Go.Text(), choice.status);
    EXPECT_EQ(rig.start.Enabled(), choice.start) << choice.path;
  }
  rig.leave.Click();
  EXPECT_FALSE(rig.window->IsOpen());
  rig.host.windows.OpenMain(*rig.window);
  for (const Choice& choice : choices) EXPECT_FALSE(rig.Captioned<CheckBox>(choice.caption).Checked());
  EXPECT_EQ(rig.window->Go.Text(), "");
  EXPECT_FALSE(rig.start.Enabled());
}

TEST(Loading, TablesCanBeWrittenOnceAllThreeAreLoaded) {
  const std::string points = "Messstellentabelle", parameters = "Parametertabelle";
  const std::string assignments = "Zuordnungstabelle";
  const std::string pointsLoaded = "Messstellentabelle wird geladen ... O.K.!";
  const std::string parametersLoaded = "Parameterliste wird geladen ... O.K.!";
  UpdateRig rig(kTables);
  rig.files["/falsch.par"] = "/N/\"1\" ";
  EXPECT_FALSE(rig.start.Enabled());
  const std::vector<Choice> choices{
      {points, "", "", ""},
      {points, "/gut", pointsLoaded, ""},
      {parameters, "/gut", parametersLoaded, ""},
      {assignments, "/fehlt", "", "Fehler beim Lesen der Datei: /fehlt.zuo!"},
      {assignments, "/gut", "Zuordnungstabelle wird geladen ... O.K.!", "", true},
      {parameters, "", "", ""},
      {parameters, "/falsch", "", "Fehler in Zeile 1, Steuerzeichen /P/ oder /E/ erwartet!\r\r/N/\"1\" "},
      {parameters, "/gut", parametersLoaded, "", true},
      {points, "", "", ""},
      {points, kBreaksOff, "", kOutOfMemory},
      {points, "/gut", pointsLoaded, "", true},
  };
  ExpectChoices(rig, choices);
}

TEST(Loading, OnlyAGoodProgramFileCanBeWritten) {
  for (const auto& [update, extension] :
       {std::pair{kProgram2, std::string(".pro")}, {kProgram3, std::string(".pr3")}}) {
    UpdateRig rig(update);
    const Bytes good = rig.files["/gut" + extension];
    rig.files["/kurz" + extension] = good.substr(1);
    rig.files["/lang" + extension] = good + "x";
    std::vector<Choice> choices;
    const auto add = [&, box = std::string("Programmdatei wählen")](const std::string& path,
                                                                    const std::string& said) {
      choices.push_back({box, path, "", said});
      choices.push_back({box, "/gut", "Programmdatei wird geladen ... O.K.!", "", true});
      choices.push_back({box, "", "", ""});  // the user clears the box
    };
    add("", "");
    add(kBreaksOff, kOutOfMemory);
    for (const std::string path : {"/fehlt", "/kurz", "/lang"}) {
      add(path, "Datei " + path + extension + " fehlerhaft!");
    }
    // One byte changed in each record, all the way through a record.
    for (std::size_t at = 0; at < good.size(); at += 259) {
      const std::string path = "/falsch" + std::to_string(at) + extension;
      rig.files[path] = good;
      rig.files[path][at] ^= '\x80';
      add(path, "Checksummenfehler in Datei " + path + "!");
    }
    ExpectChoices(rig, choices);
  }
}

}  // namespace
}  // namespace ox::test
