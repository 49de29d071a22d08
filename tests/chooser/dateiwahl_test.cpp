// Choosing files in folder trees of both path styles, as the user sees it.
#include "chooser/dateiwahl.h"

#include <gtest/gtest.h>

#include "chooser/file_chooser.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

class Chooser : public testing::Test {
 protected:
  Chooser() {
    for (const char* path :
         {R"(C:\Tab\Netz.MES)", R"(C:\Tab\Süd 2.mes)", R"(C:\Tab\netz.par)", R"(C:\Tab\alt\netz.mes)",
          R"(C:\Tab\zu\n.mes)", R"(D:\sichern.mes)", "/home/ox/n.mes", "/mnt/x/a b/c"})
      host_.files.content[path];
    host_.files.unreadable = {R"(A:\)", R"(C:\Tab\zu)"};
  }

  /// A new chooser in its first showing. The working folder decides the style.
  Dateiwahl& StartIn(const std::string& folder) {
    const bool slashes = folder.starts_with('/');
    host_.files.style = slashes ? PathStyle{'/', false} : PathStyle{'\\', true};
    host_.files.drives = {"A:", "C:", "D:"};
    if (slashes) host_.files.drives = {"/", "/mnt/x", "/mnt"};
    host_.files.workingFolder = folder;
    window_.emplace(host_.host, subs_);
    subs_.chooser.FilePattern = "*.mes";
    host_.windows.OpenMain(*window_);
    return *window_;
  }

  /// The lines, a star behind the selected one.
  static std::string Lines(const ListBox& list) {
    std::string lines;
    for (const std::string& item : list.Items()) {
      lines += (lines.empty() ? "" : ",") + item + (item == list.SelectedItem() ? "*" : "");
    }
    return lines + " | ";
  }

  /// Drives, folders, files and the name field; then what the user was told.
  std::string Seen(const Dateiwahl& window) {
    std::string seen = Lines(window.Drive1) + Lines(window.Dir1) + Lines(window.File1) + window.Text2.Text();
    for (const std::string& message : host_.windows.TakeMessages()) seen += " ! " + message;
    return seen;
  }

  /// What the chooser left behind: the file, and drive and folder to come back to.
  std::string Left() const {
    return subs_.chooser.ChosenFile + " | " + subs_.chooser.LastDrive + " " + subs_.chooser.LastFolder;
  }

  TestHost host_;
  Subs subs_;
  std::optional<Dateiwahl> window_;
};

TEST_F(Chooser, LeadsThroughDrivesFoldersAndFiles) {
  Dateiwahl& window = StartIn(R"(C:\Tab)");
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab*,    alt,    zu | Netz.MES,Süd 2.mes | )");
  // A click only marks a folder; the one that is listed already is no change.
  window.File1.Select(1);
  window.Dir1.Select(2);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab,    alt*,    zu | Netz.MES,Süd 2.mes* | Süd 2.mes)");
  window.Dir1.Activate(1);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab*,    alt,    zu | Netz.MES,Süd 2.mes | Süd 2.mes)");
  window.Dir1.Activate(3);
  window.Drive1.Select(0);
  EXPECT_EQ(Seen(window), R"(A:*,C:,D: | C:\,  Tab,    alt,    zu* | Netz.MES,Süd 2.mes | Süd 2.mes)"
                          R"( ! Fehler beim Lesen des Ordners: C:\Tab\zu! ! Gerät nicht verfügbar)");
  window.Dir1.Activate(2);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab,    alt* | netz.mes | C:\Tab\alt)");
  window.Dir1.Activate(0);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\*,  Tab |  | C:\)");
  window.Drive1.Select(2);
  EXPECT_EQ(Seen(window), R"(A:,C:,D:* | D:\* | sichern.mes | D:\)");
  window.File1.Activate(0);
  EXPECT_FALSE(window.IsOpen());
  EXPECT_EQ(Left(), R"(D:\sichern.mes | D: \)");
}

TEST_F(Chooser, ComesBackToTheLastChoiceOrStaysWhereItWas) {
  struct Row {
    std::string seen;
    std::function<void(Dateiwahl&)> user;
    std::string left;
  };
  const std::string home = "/*,/mnt/x,/mnt | /,  home,    ox* | n.mes | ";
  const Row rows[] = {
      {"/*,/mnt/x,/mnt |  |  | ",
       [](Dateiwahl& w) { w.Drive1.Select(0), w.Dir1.Activate(1), w.Dir1.Activate(2), w.File1.Activate(0); },
       "/home/ox/n.mes | / home/ox"},
      {home, [](Dateiwahl& w) { w.Drive1.Select(1), w.Command2.Click(); }, " | / home/ox"},
      {home, [&](Dateiwahl& w) { w.Drive1.Select(1), subs_.chooser.LastFolder = "fort"; }, " | / fort"},
      {"/,/mnt/x*,/mnt | /,  mnt,    x*,      a b |  | ", [](Dateiwahl&) {}, " | / fort"},
  };
  StartIn("/fort");
  FileChooser chooser(host_.host, subs_);
  for (const Row& row : rows) {
    host_.windows.OnShown("Dateiwahl", [&](Window& shown) {
      auto& window = dynamic_cast<Dateiwahl&>(shown);
      EXPECT_EQ(Seen(window), row.seen);
      row.user(window);
      window.RequestClose();
    });
    EXPECT_EQ(chooser.Choose("*.mes"), subs_.chooser.ChosenFile);
    EXPECT_EQ(Left(), row.left);
  }
}

TEST_F(Chooser, OffersANameInTheUsersLanguage) {
  Dateiwahl& window = StartIn(R"(C:\Tab)");
  EXPECT_EQ(window.Command2.Text(), "Abbrechen");
  subs_.settings.Language = "GB";
  subs_.chooser = {.ChosenFile = "netz", .ChooserPrompt = "Bitte"};
  bool enterAccepts = false;
  window.Command1.ConnectView([&](Change change) { enterAccepts = change == Change::Default; });
  host_.windows.OpenMain(window);
  EXPECT_TRUE(enterAccepts);
  EXPECT_EQ(window.Focused(), &window.Text2);
  EXPECT_EQ(Left(), " |  ") << "offered once";
  EXPECT_EQ(window.Label1.Text() + window.Command2.Text(), "BitteCancel");
  window.Drive1.Select(0);
  EXPECT_TRUE(Seen(window).ends_with(" | netz ! Device not available"));
  window.Command1.Click();
  EXPECT_EQ(Left(), R"(C:\Tab\netz | C: \Tab)") << "no pattern, no extension";
}

TEST_F(Chooser, NamesBecomePaths) {
  // The folder listed, the name typed, what is left; absolute names stand for themselves.
  const std::string rows[][3] = {
      {R"(C:\Tab)", "netz", R"(C:\Tab\netz.mes | C: \Tab)"},
      {R"(C:\Tab)", "netz.txt", R"(C:\Tab\netz.txt | C: \Tab)"},
      {R"(C:\Tab)", R"(alt.\)", R"( | C: \Tab)"},
      {R"(C:\Tab)", "/ä", R"(C:\Tab\/ä.mes | C: \Tab)"},
      {R"(C:\)", "netz.mes", R"(C:\netz.mes | C: \)"},
      {R"(\\rechner\x)", "netz", R"(\\rechner\x\netz.mes |  )"},
      {"/usr/ox", "C:x", "/usr/ox/C:x.mes | / usr/ox"},
      {"/", "netz", "/netz.mes | / "},
      {"/mnt/x/a b", "c", "/mnt/x/a b/c.mes | /mnt/x /a b"},
      {"/mnt/xy", "c", "/mnt/xy/c.mes | /mnt /xy"},
      {R"(C:\Tab)", R"(D:\alt.x\netz)", R"(D:\alt.x\netz |  )"},
      {R"(C:\Tab)", "c:a", "c:a.mes |  "},
      {R"(C:\Tab)", R"(\netz)", R"(\netz.mes |  )"},
      {"/home/ox", "/tmp/x", "/tmp/x.mes |  "},
      {"/home/ox", "", " |  "},
  };
  for (const auto& [folder, typed, left] : rows) {
    subs_.chooser = {};
    Dateiwahl& window = StartIn(folder);
    window.Text2.Edit(typed);
    window.Command1.Click();
    EXPECT_FALSE(window.IsOpen());
    EXPECT_EQ(Left(), left) << typed;
  }
}

TEST_F(Chooser, ListsTheFilesThatFitThePattern) {
  const std::string all = ".mes,Mrz.mes,März.mes,NETZ.MES,aXbXc," + std::string(60, 'a') +
                          ",netz,netz.mes,netz.mesx,netz.par,Ä.mes,€";
  std::istringstream names(all);
  for (std::string name; std::getline(names, name, ',');) host_.files.content["/m/" + name];
  Dateiwahl& window = StartIn("/m");
  EXPECT_EQ(Lines(window.File1), ".mes,Mrz.mes,März.mes,NETZ.MES,netz.mes,Ä.mes | ");
  // If every star were tried for itself, the longest would take for ever.
  const std::string rows[][2] = {
      {" netZ.ME? ", "NETZ.MES,netz.mes"},
      {"M?rz.*", "März.mes"},
      {"ä.mes", ""},
      {"?", "€"},
      {"aXbXc*?", ""},
      {"*.par; A*x?;", "aXbXc,netz.par"},
      {";", ""},
      {"*a*a*a*a*a*a*a*a*a*a*a*a*a*b", ""},
      {"*.*", all},
      {"**", all},
      {" ", all},
  };
  for (const auto& [pattern, fitting] : rows) {
    window.Text1.Edit(pattern);
    EXPECT_EQ(Lines(window.File1), fitting + " | ") << pattern;
  }
}

}  // namespace
}  // namespace ox::test
