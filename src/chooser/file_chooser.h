// The program's one file chooser, as its callers use it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "session/subs.h"
#include "ui/host.h"

namespace ox {

class Dateiwahl;

/// Makes the dialogue on its first use and keeps it: its lists stay where the user left them.
class FileChooser {
 public:
  FileChooser(Host& host, Subs& subs);
  ~FileChooser();

  /// Lets the user choose a file, modally, beginning with the files of `pattern` ("*.mes"). Returns its full
  /// path (UTF-8), which need not exist; empty when the user cancelled.
  std::string Choose(std::string_view pattern);

 private:
  Host& host_;
  Subs& subs_;
  std::unique_ptr<Dateiwahl> dialogue_;
};

}  // namespace ox
