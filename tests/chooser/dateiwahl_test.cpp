// Choosing files in folder trees of both path styles.
#include "chooser/dateiwahl.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "chooser/file_chooser.h"
#include "support/test_host.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

class Chooser : public testing::Test {
 protected:
  Chooser() {
    MemoryFiles& files = host_.files;
    files.style = {'\\', true};
    files.drives = {"A:", "C:", "D:"};
    files.workingFolder = "C:\\Tabellen";
    for (const char* path : {"C:\\auto.cfg", "C:\\Tabellen\\Netz.MES", "C:\\Tabellen\\Südnetz 2.mes",
                             "C:\\Tabellen\\netz.par", "C:\\Tabellen\\alt\\netz.mes", "D:\\sichern.mes"}) {
      files.content[path];
    }
    files.emptyFolders.insert("C:\\Tabellen\\geheim");
    files.unreadable = {"A:\\", "C:\\Tabellen\\geheim"};
  }

  /// The same tree, or so, as a host without drive letters has it.
  void UseSlashes() {
    MemoryFiles& files = host_.files;
    files.style = {'/', false};
    files.drives = {"/", "/mnt/stick"};
    files.workingFolder = "/home/ox";
    files.unreadable = {"/root"};
    files.content.clear();
    files.emptyFolders = {"/root"};
    for (const char* path : {"/home/ox/netz.mes", "/mnt/stick/a b/ä.mes", "/mnt/stick/x.par"})
      files.content[path];
  }

  /// Shows the chooser to a user who does so; without anything to do the user closes it.
  std::string Choose(const std::string& pattern, const std::function<void(Dateiwahl&)>& user) {
    host_.windows.OnShown("Dateiwahl", [&](Window& window) { user(dynamic_cast<Dateiwahl&>(window)); });
    return chooser_.Choose(pattern);
  }

  static void Type(Dateiwahl& window, const std::string& name) {
    window.Text2.Edit(name);
    window.Command1.Click();
  }

  static int IndexOf(const ListBox& list, const std::string& item) {
    const auto found = std::find_if(list.Items().begin(), list.Items().end(), [&](const std::string& line) {
      return line.substr(std::min(line.find_first_not_of(' '), line.size())) == item;
    });
    return found == list.Items().end() ? ListBox::kNone : static_cast<int>(found - list.Items().begin());
  }
  static void Enter(Dateiwahl& window, const std::string& folder) {
    window.Dir1.Activate(IndexOf(window.Dir1, folder));
  }

  ChooserValues& Values() { return subs_.chooser; }

  TestHost host_;
  Subs subs_;
  FileChooser chooser_{host_.host, subs_};
};

TEST_F(Chooser, BeginsInTheWorkingFolderWithThePatternAndAnEmptyName) {
  Values().ChooserPrompt = "Bitte";
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     EXPECT_EQ(window.Drive1.Items(), (Strings{"A:", "C:", "D:"}));
                     EXPECT_EQ(window.Drive1.SelectedItem(), "C:");
                     EXPECT_EQ(window.Dir1.Items(), (Strings{"C:\\", "  Tabellen", "    alt", "    geheim"}));
                     EXPECT_EQ(window.Dir1.Selected(), 1);
                     EXPECT_EQ(window.File1.Items(), (Strings{"Netz.MES", "Südnetz 2.mes"}));
                     EXPECT_EQ(window.Text1.Text(), "*.mes");
                     EXPECT_EQ(window.Text2.Text(), "");
                     EXPECT_EQ(window.Focused(), &window.Text2);
                     EXPECT_EQ(window.Label1.Text(), "Bitte");
                     EXPECT_EQ(window.Command2.Text(), "Abbrechen");
                     window.Text1.Edit("*.PAR; x*");
                     EXPECT_EQ(window.File1.Items(), (Strings{"netz.par"}));
                     window.RequestClose();
                   }),
            "");
}

TEST_F(Chooser, NamesBecomePaths) {
  struct Row {
    const char* typed;
    const char* pattern;
    const char* chosen;
    bool remembered;
  };
  const Row rows[] = {
      {"netz", "*.mes", "C:\\Tabellen\\netz.mes", true},
      {"netz.txt", "*.mes", "C:\\Tabellen\\netz.txt", true},
      {"alt.\\", "*.mes", "", true},
      {"netz", "", "C:\\Tabellen\\netz", true},
      {"D:\\alt\\netz.mes", "*.mes", "D:\\alt\\netz.mes", false},
      {"\\netz", "*.mes", "\\netz.mes", false},
      {"", "*.mes", "", false},
  };
  for (const Row& row : rows) {
    Values() = {};
    EXPECT_EQ(Choose(row.pattern, [&](Dateiwahl& window) { Type(window, row.typed); }), row.chosen);
    EXPECT_EQ(Values().LastDrive, row.remembered ? "C:" : "") << row.typed;
    EXPECT_EQ(Values().LastFolder, row.remembered ? "\\Tabellen" : "") << row.typed;
  }
}

TEST_F(Chooser, ClicksMarkAndDoubleClicksChoose) {
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     window.File1.Select(1);
                     EXPECT_EQ(window.Text2.Text(), "Südnetz 2.mes");
                     window.Dir1.Select(2);      // only marks
                     Enter(window, "Tabellen");  // is there already
                     EXPECT_EQ(window.Text2.Text(), "Südnetz 2.mes");
                     Enter(window, "alt");
                     EXPECT_EQ(window.Text2.Text(), "C:\\Tabellen\\alt");
                     EXPECT_EQ(window.Dir1.Items(), (Strings{"C:\\", "  Tabellen", "    alt"}));
                     Enter(window, "C:\\");
                     EXPECT_EQ(window.Text2.Text(), "C:\\");
                     EXPECT_TRUE(window.File1.Items().empty());
                     Enter(window, "Tabellen");
                     window.File1.Activate(0);
                     EXPECT_FALSE(window.IsOpen());
                   }),
            "C:\\Tabellen\\Netz.MES");
  // The folder's path in the name field is a name like any other.
  EXPECT_EQ(Choose("*.mes",
                   [](Dateiwahl& window) {
                     Enter(window, "alt");
                     window.Command1.Click();
                   }),
            "C:\\Tabellen\\alt.mes");
  // In the root no separator is doubled, and the root is remembered.
  EXPECT_EQ(Choose("*.mes",
                   [](Dateiwahl& window) {
                     window.Drive1.Select(2);
                     EXPECT_EQ(window.Text2.Text(), "D:\\");
                     window.File1.Activate(0);
                   }),
            "D:\\sichern.mes");
  EXPECT_EQ(Values().LastDrive + " " + Values().LastFolder, "D: \\");
}

TEST_F(Chooser, CancelledHoweverTheUserLikes) {
  const std::function<void(Dateiwahl&)> ways[] = {
      [](Dateiwahl& window) { window.Command2.Click(); },
      [](Dateiwahl& window) { window.RequestClose(); },
      [](Dateiwahl& window) {
        window.File1.Select(0);
        window.Command2.Click();
      },
  };
  for (const auto& way : ways) {
    EXPECT_EQ(Choose("*.mes", way), "");
    EXPECT_EQ(Values().ChosenFile, "");
    EXPECT_EQ(Values().LastDrive, "");
  }
}

TEST_F(Chooser, GoesBackToTheLastChoiceOrStaysWhereItWas) {
  Choose("*.mes", [](Dateiwahl& window) { Type(window, "netz"); });
  Choose("*.mes", [](Dateiwahl& window) {
    EXPECT_EQ(window.Text2.Text(), "") << "the last choice is not offered";
    window.Drive1.Select(2);
    window.RequestClose();
  });
  Choose("*.par", [](Dateiwahl& window) {
    EXPECT_EQ(window.Drive1.SelectedItem(), "C:");
    EXPECT_EQ(window.File1.Items(), (Strings{"netz.par"}));
    EXPECT_EQ(window.Text2.Text(), "");
    window.Drive1.Select(2);
    window.RequestClose();
  });
  Values().LastFolder = "\\fort";
  Choose("*.mes", [](Dateiwahl& window) {
    EXPECT_EQ(window.File1.Items(), (Strings{"sichern.mes"}));
    window.RequestClose();
  });
  // A caller may offer a name; it is taken once.
  Values().ChosenFile = "vorschlag.mes";
  Dateiwahl direct(host_.host, subs_);
  bool enterAccepts = false;
  direct.Command1.ConnectView([&](Change change) { enterAccepts = change == Change::Default; });
  host_.windows.OpenMain(direct);
  EXPECT_TRUE(enterAccepts);
  EXPECT_EQ(direct.Text2.Text(), "vorschlag.mes");
  EXPECT_EQ(Values().ChosenFile, "");
}

TEST_F(Chooser, WhatCannotBeReadIsToldAndNotEntered) {
  for (const char* language : {"D", "GB"}) {
    subs_.settings.Language = language;
    Choose("*.mes", [&](Dateiwahl& window) {
      window.Drive1.Select(0);
      EXPECT_EQ(window.Drive1.SelectedItem(), "A:");
      EXPECT_EQ(window.Dir1.Items().size(), 4U);
      EXPECT_EQ(window.Text2.Text(), "");
      Enter(window, "geheim");
      EXPECT_EQ(window.File1.Items().size(), 2U);
      EXPECT_EQ(window.Command2.Text() == "Cancel", language == std::string("GB"));
      window.RequestClose();
    });
  }
  const std::string folder = "Fehler beim Lesen des Ordners: C:\\Tabellen\\geheim!";
  EXPECT_EQ(host_.windows.Messages(),
            (Strings{"Gerät nicht verfügbar", folder, "Device not available", folder}));
}

TEST_F(Chooser, WithoutDriveLettersTheVolumesAreTheDrives) {
  UseSlashes();
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     EXPECT_EQ(window.Dir1.Items(), (Strings{"/", "  home", "    ox"}));
                     EXPECT_EQ(window.Drive1.SelectedItem(), "/");
                     Type(window, "netz");
                   }),
            "/home/ox/netz.mes");
  EXPECT_EQ(Values().LastDrive + " " + Values().LastFolder, "/ home/ox");
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     EXPECT_EQ(window.File1.Items(), Strings{"netz.mes"});
                     window.Drive1.Select(1);
                     EXPECT_EQ(window.Dir1.Items(), (Strings{"/", "  mnt", "    stick", "      a b"}));
                     Enter(window, "a b");
                     EXPECT_EQ(window.Drive1.SelectedItem(), "/mnt/stick");
                     window.File1.Activate(0);
                   }),
            "/mnt/stick/a b/ä.mes");
  EXPECT_EQ(Values().LastDrive + " " + Values().LastFolder, "/mnt/stick /a b");
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     EXPECT_EQ(window.File1.Items(), Strings{"ä.mes"});
                     Enter(window, "/");
                     Enter(window, "root");
                     EXPECT_EQ(window.Text2.Text(), "/");
                     Type(window, "/tmp/x");
                   }),
            "/tmp/x.mes");
  EXPECT_EQ(host_.windows.TakeMessages(), Strings{"Fehler beim Lesen des Ordners: /root!"});
}

TEST_F(Chooser, AFolderTreeThatIsGoneLeavesAnEmptyChooser) {
  host_.files.workingFolder = "C:\\fort";
  EXPECT_EQ(Choose("*.mes",
                   [&](Dateiwahl& window) {
                     EXPECT_TRUE(window.Dir1.Items().empty());
                     EXPECT_EQ(window.Drive1.Items().size(), 3U);
                     window.Dir1.Activate(0);
                     window.File1.Activate(0);
                     window.Drive1.Select(1);
                     EXPECT_EQ(window.Dir1.Items(), (Strings{"C:\\", "  Tabellen"}));
                     window.Command2.Click();
                   }),
            "");
}

}  // namespace
}  // namespace ox::test
