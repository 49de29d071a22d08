// Reasons and advice, in words.
#include "platform/port_errors.h"

namespace ox {

PortError NoSuchPort() {
  return PortError("nicht vorhanden", "Adapter einstecken oder eine andere Schnittstelle wählen");
}

PortError Taken(const std::string& holder) {
  if (holder.empty()) return PortError("von einem anderen Programm belegt", "Das andere Programm beenden");
  return PortError("von einem anderen Programm belegt (" + holder + ")", holder + " beenden oder abwarten");
}

PortError NotSerial(const std::string& advice) {
  return PortError("keine serielle Schnittstelle", advice);
}

PortError RefusesSettings() {
  return PortError("nimmt die Schnittstellenparameter nicht an", "Einen anderen Adapter nehmen");
}

PortError HungUp() {
  return PortError("Verbindung unterbrochen", "Adapter und Stecker prüfen, dann den Befehl wiederholen");
}

PortError PulledOut(const std::string& device) {
  return PortError(
      {device, "während der Arbeit abgezogen", "Adapter wieder einstecken, dann den Befehl wiederholen"});
}

PortError SendsNothing() {
  return PortError("sendet nicht", "Adapter und Leitung prüfen, dann den Befehl wiederholen");
}

}  // namespace ox
