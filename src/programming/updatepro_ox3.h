// UpdateproOx3: writes a new program into a generation III device.
#pragma once

#include "programming/program_update_window.h"

namespace ox {

class UpdateproOx3 : public ProgramUpdateWindow {
 public:
  UpdateproOx3(Host& host, Subs& subs, FileChooser& chooser)
      : ProgramUpdateWindow(ProgramUpdate3(), host, subs, chooser) {}
};

}  // namespace ox
