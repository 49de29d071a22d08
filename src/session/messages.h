// Messages that more than one window shows.
#pragma once

#include <string_view>

namespace ox {

/// No device was found.
constexpr std::string_view kConnectionMessage =
    "Verbindung mit Orvanexe konnte nicht hergestellt werden.\r\n"
    "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
    "COM-Port angeschlossen und eingeschaltet ist!";

}  // namespace ox
