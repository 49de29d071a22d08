// The settings file OX.CFG in the working folder.
#pragma once

#include "platform/files.h"
#include "session/session_settings.h"

namespace ox {

class MenuEntry;

/// The menu entries that the settings file switches on; the state of the tools menu is kept in its entry
/// alone.
struct SwitchedEntries {
  MenuEntry& MenueTools;
  MenuEntry& MenuModem;
};

/// Sets every default, then reads OX.CFG if it is there. A file that is missing or cannot be read leaves the
/// defaults; nobody is told. The packer's paths are UTF-8 in the file.
void LoadSettings(Files& files, SessionSettings& settings, SwitchedEntries entries);

/// Writes OX.CFG anew, beside the old one and renamed; a failure leaves the old one, and nobody is told.
void SaveSettings(Files& files, const SessionSettings& settings, SwitchedEntries entries);

}  // namespace ox
