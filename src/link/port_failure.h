// What the user is told of a port that cannot be opened, or that breaks in use.
#pragma once

#include <string>

#include "session/session_settings.h"

namespace ox {

/// How the message names the session's port: "2" after a dialogue, "COM2" where line settings are tried or a
/// device is programmed.
enum class PortNaming { kNumber, kCom };

/// The message, UTF-8.
std::string PortFailure(const SessionSettings& settings, PortNaming naming);

}  // namespace ox
