// The file chooser's working values, which `Subs` holds beside the session settings.
#pragma once

#include <string>

namespace ox {

/// How callers and the file chooser talk to each other. Paths and prompt are UTF-8.
struct ChooserValues {
  std::string FilePattern;    // set by the caller: "*.mes"
  std::string ChosenFile;     // in: a name to offer; out: the full path, empty for cancel
  std::string LastDrive;      // of the last choice from the list: "C:"
  std::string LastFolder;     // the same without its drive: "\Tabellen"
  std::string ChooserPrompt;  // text above the lists; nobody sets it
};

}  // namespace ox
