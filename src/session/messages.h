// Messages that are shown in more than one place.
#pragma once

#include <string_view>

namespace ox {

/// No device was found.
constexpr std::string_view kConnectionMessage =
    "Verbindung mit Orvanexe konnte nicht hergestellt werden.\r\n"
    "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
    "COM-Port angeschlossen und eingeschaltet ist!";

/// Before a program update. It names generation II also where the window of generation III is opened.
constexpr std::string_view kUpdateWarning =
    "Wichtiger Hinweis:\r\n"
    "\r\n"
    "Führen Sie den Programmiervorgang nur aus, wenn die Stromversorgung\r\n"
    "der Orvanexe II sichergestellt ist (Akku ausreichend geladen\r\n"
    "oder Ladegerät angeschlossen) und achten Sie auf eine sichere\r\n"
    "Verbindung zum PC (Stecker verschraubt)!\r\n"
    "\r\n"
    "Eine Unterbrechung während der Programmierung kann dazu führen, dass\r\n"
    "das Programm nicht lauffähig ist und das Gerät in die Werkstatt muss!\r\n";

}  // namespace ox
