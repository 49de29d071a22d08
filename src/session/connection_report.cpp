// The lines of the report.
#include "session/connection_report.h"

#include <string_view>

#include "platform/text.h"

namespace ox {

std::string ConnectionReport(const SessionSettings& settings) {
  std::string report;
  const auto line = [&](std::string_view text) { report.append(text).append(settings.CRLF); };
  line("Verbindung ist hergestellt!");
  line("");
  line("Gerätetyp: " + ToText(settings.DeviceType()));
  line("Softwarestand: " + ToText(settings.SoftwareVersion()));
  line("Baudrate: " + ToText(settings.BaudRate));
  line(settings.Parity == "E" ? "Parität: gerade" : "Parität: ungerade");
  line("Datenbits: 7");
  return report + "COM-Port: " + settings.PortText();
}

}  // namespace ox
