// Subs: the values that live for the whole run. One instance, owned by Program.
#pragma once

#include "session/session_settings.h"

namespace ox {

/// The file chooser's working values, in a header of the chooser's own.
struct ChooserValues;

struct Subs {
  SessionSettings settings;
  ChooserValues& chooser;
};

}  // namespace ox
