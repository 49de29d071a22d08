// updatepro: writes a new program into a generation II device.
#pragma once

#include "programming/program_update_window.h"

namespace ox {

class updatepro : public ProgramUpdateWindow {
 public:
  updatepro(Host& host, Subs& subs, FileChooser& chooser)
      : ProgramUpdateWindow(ProgramUpdate2(), host, subs, chooser) {}
};

}  // namespace ox
