// The options by which a command finds its device.
#pragma once

#include <string>

#include "command_line/new_option.h"
#include "session/session_settings.h"

namespace ox::tool {

struct DeviceOptions {
  std::string port;  ///< "COM1", or a device file
  std::string line;  ///< "9600,O"; empty: a connection test finds the settings
};

/// Adds --port and --line; `options` outlives the reading.
void DefineDeviceOptions(CLI::App& app, DeviceOptions& options);

/// The session that the options begin.
SessionSettings SettingsOf(const DeviceOptions& options);

/// A check of an option: a whole number from `least` to `most`.
OptionCheck WholeNumber(int least, int most);

}  // namespace ox::tool
