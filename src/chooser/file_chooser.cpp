// The one dialogue behind the callers' file chooser.
#include "chooser/file_chooser.h"

#include "chooser/chooser_values.h"
#include "chooser/dateiwahl.h"

namespace ox {

FileChooser::FileChooser(Host& host, Subs& subs) : host_(host), subs_(subs) {}

FileChooser::~FileChooser() = default;

std::string FileChooser::Choose(std::string_view pattern) {
  subs_.chooser.FilePattern = pattern;
  subs_.chooser.ChosenFile.clear();
  if (!dialogue_) dialogue_ = std::make_unique<Dateiwahl>(host_, subs_);
  host_.windows.ShowModal(*dialogue_);
  return subs_.chooser.ChosenFile;
}

}  // namespace ox
