// The table of generations, and its texts.
#include "programming/device_kind.h"

#include <array>

#include "programming/update_steps.h"

namespace ox {
namespace {

constexpr std::string_view kNotFound =
    "Verbindung mit Orvanexe II konnte nicht hergestellt werden.\r\n"
    "Bitte überprüfen Sie, ob die Orvanexe am eingestellten\r\n"
    "COM-Port angeschlossen und eingeschaltet ist!\r\n\r\n"
    "Zum Programmupdate der Orvanexe II mit SW-Stand vor 3.0\r\n"
    "muss zuvor am Gerät der Programmiermodus eingestellt werden!\r\n"
    "Hierzu ist es bei gedrückten Pfeiltasten einzuschalten.";
constexpr std::string_view kProgrammingModeHint = kNotFound.substr(kNotFound.find("Zum Programmupdate"));

constexpr std::string_view kGeneration1 =
    "Abbruch: OX 1 kann so nicht programmiert werden!\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

constexpr std::string_view kDeviceChanged =
    "Abbruch: Gerätewechsel während der Programmierung nicht zulässig !\r\n"
    "Bitte wenden Sie sich an den Hersteller.";

constexpr std::string_view kUnusableWarning =
    "\r\nWarnung: Orvanexe nicht lauffähig! Bitte Werkstatt aufsuchen!";

constexpr BytesView kAnyType;

// The numbers in the abort messages of the steps that the generations do not share.
constexpr Refusal kFirstStepRefused{13};
constexpr Refusal kSecondStepRefused{14};
constexpr int kBlockRefused = 15;
constexpr Refusal kKindRefused{91};

constexpr std::array kKindQueries2{request::kOlderKind};
constexpr std::array kKindQueries3{request::kGeneration3Kind, request::kLaterGeneration3Kind};

constexpr std::array kOtherTypes2{TypeRefusal{"OX 1", kGeneration1},
                                  TypeRefusal{kAnyType, kProgrammingModeHint}};
constexpr std::array kOtherTypes3{TypeRefusal{kAnyType, kDeviceChanged}};

constexpr std::array kPreparations2{
    Preparation{request::kOlderKind, step::kAskForKind, false, {Refusal::kNoNumber, kGeneration1}},
    Preparation{request::kPrepareProgramFirst, step::kPrepare, true, kFirstStepRefused},
    Preparation{request::kPrepareProgramSecond, step::kPrepare, true, kSecondStepRefused}};
constexpr std::array kPreparations3{
    Preparation{request::kLaterGeneration3Kind, step::kAskForKind, false, kKindRefused}};

constexpr DeviceKind kGeneration2Kind{
    .type = "OX 2",
    .name = "OX II",
    .tables = {.kindQueries = kKindQueries2,
               .image = &TableImages::older,
               .overflow = "Abbruch: Überlauffehler der Tabellen!",
               .unusable = {}},  // every image of this generation can be used
    .program = {.windowName = "updatepro",
                .caption = "Update Programm OX II",
                .filePattern = "*.pro",
                .format = kProgramFormat2,
                .notFound = kNotFound,
                .triesLoaderFirst = true,
                .probesLoader = true,
                .otherTypes = kOtherTypes2,
                .preparations = kPreparations2,
                .transfer = {.write = request::kWriteProgram2,
                             .markPeriod = 4,
                             .markPhase = 1,
                             .refusal = {kBlockRefused, Refusal::kWrongAnswer, kUnusableWarning}}}};

constexpr DeviceKind kGeneration3Kind{
    .type = "OX 3",
    .name = "OX III",
    .tables = {.kindQueries = kKindQueries3,
               .image = &TableImages::generation3,
               .overflow = "Abbruch: Überlauffehler der Tabellen OX3!",
               .unusable = "Abbruch: Tabellen OX3 fehlerhaft!"},
    .program = {
        .windowName = "UpdateproOx3",
        .caption = "Update Programm OX III",
        .filePattern = "*.pr3",
        .format = kProgramFormat3,
        .notFound = kNotFound,
        .triesLoaderFirst = false,
        .probesLoader = false,
        .otherTypes = kOtherTypes3,
        .preparations = kPreparations3,
        .transfer = {
            .write = request::kWriteProgram3, .markPeriod = 8, .markPhase = 0, .refusal = {kBlockRefused}}}};

constexpr std::array kKinds{kGeneration2Kind, kGeneration3Kind};

}  // namespace

std::span<const DeviceKind> DeviceKinds() {
  return kKinds;
}

const DeviceKind* FindDeviceKind(BytesView type) {
  for (const DeviceKind& kind : kKinds) {
    if (type.starts_with(kind.type)) return &kind;
  }
  return nullptr;
}

const DeviceKind& ProgramWindowKind(BytesView type) {
  const DeviceKind* kind = FindDeviceKind(type);
  return kind != nullptr ? *kind : kKinds.front();
}

}  // namespace ox
