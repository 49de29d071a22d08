// Choosing files in folder trees of both path styles, as the user sees it.
#include "chooser/dateiwahl.h"

#include "chooser/chooser_values.h"
#include "chooser/file_chooser.h"
#include "support/expected_text.h"
#include "support/test_host.h"

namespace ox::test {

struct Chooser : testing::Test {
  Chooser() {
    for (const char* path :
         {R"(C:\Tab\Netz.MES)", R"(C:\Tab\Süd 2.mes)", R"(C:\Tab\netz.par)", R"(C:\Tab\alt\netz.mes)",
          R"(C:\Tab\zu\n.mes)", R"(D:\sichern.mes)", "/home/ox/n.mes", "/mnt/x/a b/c"})
      host_.files.content[path];
    host_.files.unreadable = {R"(A:\)", R"(C:\Tab\zu*)"};
  }

  /// A new chooser in its first showing. The working folder decides the style.
  Dateiwahl& StartIn(const std::string& folder) {
    const bool slashes = folder.starts_with('/');
    host_.files.style = slashes ? PathStyle{'/', false} : PathStyle{'\\', true};
    host_.files.drives = {"A:", "C:", "D:"};
    if (slashes) host_.files.drives = {"/", "/mnt/x", "/mnt"};
    host_.files.workingFolder = folder;
    window_.emplace(host_.host, subs_);
    window_->Command1.ConnectView([this](Change change) { enterAccepts_ = change == Change::kDefault; });
    subs_.chooser = {.FilePattern = "*.mes"};
    host_.windows.OpenMain(*window_);
    return *window_;
  }

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
  ChooserValues chooserValues_;
  Subs subs_{{}, chooserValues_};
  std::optional<Dateiwahl> window_;
  bool enterAccepts_ = false;
};

TEST_F(Chooser, LeadsThroughDrivesFoldersAndFiles) {
  Dateiwahl& window = StartIn(R"(C:\Tab)");
  EXPECT_EQ(window.Focused(), &window.Text2);
  EXPECT_TRUE(enterAccepts_);
  EXPECT_EQ(window.Command2.Text(), "Abbrechen");
  window.File1.Select(1);
  window.File1.Select(2), window.File1.Activate(2);  // there is none
  window.Dir1.Select(2);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab,    alt*,    zu | Netz.MES,Süd 2.mes* | Süd 2.mes)")
      << "a click only marks a folder";
  window.Dir1.Activate(3);
  window.Drive1.Select(0);
  EXPECT_EQ(Seen(window), R"(A:*,C:,D: | C:\,  Tab,    alt,    zu* | Netz.MES,Süd 2.mes* | Süd 2.mes)"
                          R"( ! Fehler beim Lesen des Ordners: C:\Tab\zu! ! Gerät nicht verfügbar)");
  window.Dir1.Activate(2);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab,    alt* | netz.mes | C:\Tab\alt)");
  window.Dir1.Activate(1);
  EXPECT_EQ(Seen(window), R"(A:,C:*,D: | C:\,  Tab*,    alt,    zu | Netz.MES,Süd 2.mes | C:\Tab)");
  window.Drive1.Select(2);
  EXPECT_EQ(Seen(window), R"(A:,C:,D:* | D:\* | sichern.mes | D:\)");
  window.File1.Activate(0);
  EXPECT_FALSE(window.IsOpen());
  EXPECT_EQ(Left(), R"(D:\sichern.mes | D: \)");
  subs_.settings.Language = "GB";
  host_.windows.OpenMain(window);
  host_.windows.OnMessage([&](const std::string&) { window.RequestClose(), window.Command2.Click(); });
  window.Drive1.Select(0);
  EXPECT_EQ(window.Command2.Text(), "Cancel");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Device not available"});
  host_.windows.OpenMain(window);
  EXPECT_TRUE(window.IsOpen());
}

TEST_F(Chooser, ComesBackToTheLastChoiceOrStaysWhereItWas) {
  StartIn("/fort");
  FileChooser chooser(host_.host, subs_);
  const auto choose = [&](const std::string& seen, const std::function<void(Dateiwahl&)>& user,
                          const char* pattern = "*.mes") {
    host_.windows.OnShown("Dateiwahl", [&](Window& shown) {
      auto& window = dynamic_cast<Dateiwahl&>(shown);
      EXPECT_EQ(Seen(window), seen);
      user(window);
      EXPECT_FALSE(window.IsOpen());
    });
    return chooser.Choose(pattern);
  };
  const auto takeFileInHome = [](Dateiwahl& window) {
    window.Drive1.Select(0), window.Dir1.Activate(1);
    window.Dir1.Activate(2), window.File1.Activate(0);
  };
  const auto giveUpElsewhere = [](Dateiwahl& window) { window.Drive1.Select(1), window.Command2.Click(); };
  const std::string home = "/*,/mnt/x,/mnt | /,  home,    ox* | n.mes | ";
  EXPECT_EQ(choose("/*,/mnt/x,/mnt |  |  | ", takeFileInHome), "/home/ox/n.mes");
  EXPECT_EQ(choose(home, giveUpElsewhere), "");
  EXPECT_EQ(Left(), " | / home/ox");
  choose(home, [](Dateiwahl& window) { window.Drive1.Select(1), window.RequestClose(); });
  subs_.chooser.LastFolder = "fort";
  choose("/,/mnt/x*,/mnt | /,  mnt,    x*,      a b |  | ", takeFileInHome);
  host_.files.unreadable = {"/home/ox"};
  choose("/*,/mnt/x,/mnt | /,  home,    ox* |  | ", giveUpElsewhere, "*.par");
}

TEST_F(Chooser, NamesBecomePaths) {
  std::string seen;
  const std::pair<const char*, const char*> names[] = {
      {R"(C:\Tab)", "netz"},     {R"(C:\)", "netz.txt"},
      {R"(C:\Tab)", R"(alt.\)"}, {R"(\\rechner\x)", "netz"},
      {"/mnt/x/a b", "c"},       {"/mnt/x/a b", "c:d"},
      {"/mnt/xy", "c"},          {R"(C:\Tab)", R"(D:\alt.x\netz)"},
      {"/home/ox", "/tmp/x"},    {"/home/ox", ""}};
  for (const auto& [folder, typed] : names) {
    Dateiwahl& window = StartIn(folder);
    window.Text2.Edit(typed);
    window.Command1.Click();
    EXPECT_FALSE(window.IsOpen());
    seen += std::string(folder) + " + " + typed + " = " + Left() + "|\n";
  }
  ExpectFile("chooser/names.txt", seen);
}

TEST_F(Chooser, ListsTheFilesThatFitThePattern) {
  const std::string sixtyAs(60, 'a');  // takes for ever if every star is tried for itself
  host_.files.content[R"(C:\Tab\)" + sixtyAs];
  host_.files.content[R"(C:\Tab\÷ÿàþaz.par)"];
  std::string seen;
  Dateiwahl& window = StartIn(R"(C:\Tab)");
  for (const char* pattern : {"*.mes", " netZ*.ME?* ", "*.par;S?d*;", "sÜD*; ÷ß.par; ×*", "÷ÿÀÞAZ.par",
                              "*a*a*a*a*a*a*a*a*a*a*a*a*a*b;*S2*;S?x*", "*.*", " "}) {
    window.Text1.Edit(pattern);
    seen += Lines(window.File1) + '"' + pattern + "\"\n";
  }
  ExpectFile("chooser/patterns.txt", seen);
}

}  // namespace ox::test
