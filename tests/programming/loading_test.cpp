// Choosing and loading what is to be written: boxes, status line, messages.
#include <new>

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
  for (const Choice& choice : choices) {
    CheckBox& box = *rig.boxes[choice.box];
    if (choice.path == kBreaksOff) rig.host.windows.In(0, [] { throw std::bad_alloc(); });
    rig.Choose(box, choice.path);
    EXPECT_EQ(rig.host.windows.TakeMessages(), choice.said);
    EXPECT_EQ(box.Checked(), !choice.status.empty()) << choice.path;
    EXPECT_EQ(rig.window->Go.Text(), choice.status);
    EXPECT_EQ(rig.start.Enabled(), choice.start) << choice.path;
  }
  rig.leave.Click();
  EXPECT_FALSE(rig.window->IsOpen());
  rig.host.windows.OpenMain(*rig.window);
  for (const CheckBox* box : rig.boxes) EXPECT_FALSE(box->Checked());
  EXPECT_EQ(rig.window->Go.Text(), "");
  EXPECT_FALSE(rig.start.Enabled());
}

TEST(Loading, TablesCanBeWrittenOnceAllThreeAreLoaded) {
  const std::string points = "Messstellentabelle wird geladen ... O.K.!";
  const std::string parameters = "Parameterliste wird geladen ... O.K.!";
  UpdateRig rig(kTables);
  rig.files["/falsch.par"] = "/N/\"1\" ";
  EXPECT_FALSE(rig.start.Enabled());
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

TEST(Loading, OnlyAGoodProgramFileCanBeWritten) {
  for (const auto& [update, extension] : {std::pair<Update, Bytes>{kProgram2, ".pro"}, {kProgram3, ".pr3"}}) {
    UpdateRig rig(update);
    const Bytes good = rig.files["/gut" + extension];
    std::vector<Choice> choices;
    const auto add = [&](const std::string& path, const Strings& said) {
      choices.push_back({0, path, "", said});
      choices.push_back({0, "/gut", "Programmdatei wird geladen ... O.K.!", {}, true});
      choices.push_back({0, "", "", {}});  // the user clears the box
    };
    add("", {});
    add(kBreaksOff, {kOutOfMemory});
    rig.files["/kurz" + extension] = good.substr(1);
    rig.files["/lang" + extension] = good + "x";
    for (const char* name : {"/fehlt", "/kurz", "/lang"}) {
      add(name, {"Datei " + (name + extension) + " fehlerhaft!"});
    }
    // One byte changed in each record, all the way through a record.
    for (std::size_t at = 0; at < good.size(); at += 259) {
      const std::string path = "/falsch" + std::to_string(at) + extension;
      rig.files[path] = good;
      rig.files[path][at] ^= '\x80';
      add(path, {"Checksummenfehler in Datei " + path + "!"});
    }
    ExpectChoices(rig, choices);
  }
}

}  // namespace
}  // namespace ox::test
