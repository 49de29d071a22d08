// Dateiwahl: the program's own dialogue for choosing a file by drive, folder and pattern.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/subs.h"
#include "ui/controls.h"
#include "ui/host.h"
#include "ui/window.h"

namespace ox {

/// Each time it is shown it takes the pattern and the offered name from the chooser's working values; it
/// leaves the chosen path there, or the empty text for a cancel. The first showing begins in the working
/// folder. Later the lists stay where the user left them, unless the working values name the folder of the
/// last choice.
class Dateiwahl : public Window {
 public:
  Dateiwahl(Host& host, Subs& subs);

  Label Label1{*this, "Label1"};
  TextBox Text2{*this, "Text2"};  // the name, or a whole path
  ListBox File1{*this, "File1"};  // files of the folder that fit the pattern
  TextBox Text1{*this, "Text1"};  // the pattern
  ListBox Dir1{*this, "Dir1"};    // the way from the root to the folder, then its subfolders
  ListBox Drive1{*this, "Drive1"};
  Button Command1{*this, "Command1", "O.K."};
  Button Command2{*this, "Command2", "Abbrechen"};

 protected:
  void OnLoad() override;
  void OnActivate() override;
  /// Only hides: the choice was emptied when the showing began.
  void OnClose() override;

 private:
  void ChooseDrive();
  void ChooseFolder();
  void TakeFileName();
  void Accept();
  void Cancel();

  /// The path that "O.K." makes of the name field; empty when it makes none. Adds a missing extension to the
  /// field, and remembers the folder when the name was relative to it.
  std::string ChosenPath();

  void RestoreLastFolder();
  void ShowDrives();
  void ShowFiles();
  /// Lists a folder; false, with the lists as they were, when it cannot be read.
  bool ListFolder(const std::string& folder);
  /// Lists a folder that the user went to; false when it cannot be read; the caller tells the user.
  bool GoTo(const std::string& folder);
  bool English() const;

  Host& host_;
  Subs& subs_;
  PathStyle style_;
  std::string folder_;                    // full path of the folder listed
  std::vector<std::string> folderPaths_;  // of the lines of Dir1
  std::vector<std::string> fileNames_;    // in the folder, whatever the pattern
};

}  // namespace ox
