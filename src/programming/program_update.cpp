// The two program updates side by side, and their texts.
#include "programming/program_update.h"

namespace ox {
namespace {

constexpr std::string_view kProgrammingModeHint =
    "Zum Programmupdate der Orvanexe II mit SW-Stand vor 3.0\r\n"
    "muss zuvor am Gerät der Programmiermodus eingestellt werden!\r\n"
    "Hierzu ist es bei gedrückten Pfeiltasten einzuschalten.";

constexpr std::string_view kGeneration1 =
    "Abbruch: OX 1 kann so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

constexpr std::string_view kDeviceChanged =
    "Abbruch: Gerätewechsel während der Programmierung nicht zulässig !\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

constexpr std::string_view kUnusableWarning =
    "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";

constexpr BytesView kAnyType;

// The numbers in the abort messages of this procedure.
constexpr int kFirstStepRefused = 13;
constexpr int kSecondStepRefused = 14;
constexpr int kBlockRefused = 15;
constexpr int kKindRefused = 91;

}  // namespace

std::string ProgramUpdateConnectionMessage() {
  return "Verbindung mit Orvanexe II konnte nicht hergestellt werden.\r\n"
         "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
         "COM-Port angeschlossen und eingeschaltet ist!\r\n\r\n" +
         std::string(kProgrammingModeHint);
}

const ProgramUpdate& ProgramUpdate2() {
  static const ProgramUpdate kUpdate{
      .windowName = "updatepro",
      .caption = "Update Programm OX II",
      .filePattern = "*.pro",
      .format = kProgramFormat2,
      .triesLoaderFirst = true,
      .probesLoader = true,
      .deviceType = "OX 2",
      .otherTypes = {{"OX 1", kGeneration1}, {kAnyType, kProgrammingModeHint}},
      .preparations = {{request::kOlderKind, false, std::string(kGeneration1), false},
                       {request::kPrepareProgramFirst, true, WrongAnswer(kFirstStepRefused)},
                       {request::kPrepareProgramSecond, true, WrongAnswer(kSecondStepRefused)}},
      .transfer = {.write = request::kWriteProgram2, .markPeriod = 4, .markPhase = 1},
      .blockRefusal = WrongAnswer(kBlockRefused) + std::string(kUnusableWarning),
  };
  return kUpdate;
}

const ProgramUpdate& ProgramUpdate3() {
  static const ProgramUpdate kUpdate{
      .windowName = "UpdateproOx3",
      .caption = "Update Programm OX III",
      .filePattern = "*.pr3",
      .format = kProgramFormat3,
      .triesLoaderFirst = false,
      .probesLoader = false,
      .deviceType = "OX 3",
      .otherTypes = {{kAnyType, kDeviceChanged}},
      .preparations = {{request::kLaterGeneration3Kind, false, WrongAnswer(kKindRefused)}},
      .transfer = {.write = request::kWriteProgram3, .markPeriod = 8, .markPhase = 0},
      .blockRefusal = WrongAnswer(kBlockRefused),
  };
  return kUpdate;
}

}  // namespace ox
