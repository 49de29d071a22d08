// What the user is told of a device that was found.
#pragma once

#include <string>

#include "session/session_settings.h"

namespace ox {

/// Type and version of the device and how it is spoken to, from the settings that a search left; UTF-8, lines
/// separated by CR LF.
std::string ConnectionReport(const SessionSettings& settings);

}  // namespace ox
