// What the steps of an update are called; shown while the device is at work.
#pragma once

#include <string_view>

namespace ox::step {

constexpr std::string_view kAskLoader = "Lader wird angesprochen ...";
constexpr std::string_view kFindDevice = "Verbindung wird geprüft ...";
constexpr std::string_view kEnterLoader = "Gerät wechselt in den Lader ...";
constexpr std::string_view kAskForKind = "Gerätetyp wird abgefragt ...";
constexpr std::string_view kPrepare = "Gerät bereitet sich vor ...";
constexpr std::string_view kWriteTables = "Tabellen werden übertragen ...";
constexpr std::string_view kWriteProgram = "Programm wird übertragen ...";
constexpr std::string_view kVerifyTables = "Gerät prüft die Tabellen ...";
constexpr std::string_view kVerifyProgram = "Gerät prüft das Programm ...";
constexpr std::string_view kFinish = "Gerät nimmt den Betrieb wieder auf ...";

}  // namespace ox::step
