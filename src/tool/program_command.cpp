// oxtool program: what is in a program file, and what is wrong with it.
#include <algorithm>
#include <memory>
#include <ostream>

#include "platform/hex_text.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/json_output.h"
#include "tool/program_files.h"

namespace ox::tool {
namespace {

std::string Byte(unsigned value) {
  return HexWord(value).substr(2) + " hex";
}

/// Where a record stands, in the file and in the device.
std::string Place(std::size_t record) {
  return "Datensatz " + std::to_string(record) + " (ab Byte " + std::to_string(record * kProgramRecordSize) +
         ", Adresse " + HexWord(record * kProgramPageSize) + " hex): ";
}

struct Findings {
  std::vector<std::string> faults;
  std::vector<std::string> warnings;
};

Findings FindingsIn(const ProgramInspection& inspection, const ProgramFormat& format) {
  Findings found;
  for (const OddRecord& odd : inspection.wrongSums) {
    found.faults.push_back(Place(odd.record) + "Summe " + Byte(odd.sum) + ", 00 hex erwartet");
  }
  for (const OddRecord& odd : inspection.wrongNumbers) {
    found.warnings.push_back(Place(odd.record) + "Nummer " + Byte(odd.number) + ", " +
                             Byte(static_cast<unsigned>(odd.record)) + " erwartet");
  }
  // A check word that the update puts in may be anything in the file.
  if (!format.checkWordMissing && inspection.storedWord != inspection.rightWord) {
    found.warnings.push_back("Prüfwort " + HexWord(inspection.storedWord) + " hex, zum Programm gehört " +
                             HexWord(inspection.rightWord) + " hex");
  }
  return found;
}

void WriteText(const std::string& path, const DeviceKind& kind, const ProgramInspection& inspection,
               const Findings& found, std::ostream& out) {
  const ProgramFormat& format = kind.program.format;
  for (const std::string& fault : found.faults) out << path << ": " << fault << "\n";
  for (const std::string& warning : found.warnings) out << path << ": Warnung: " << warning << "\n";
  out << path << ": Programm für " << kind.name << ", " << format.records << " Datensätze, "
      << format.ProgramSize() << " Bytes, Prüfwort "
      << HexWord(format.checkWordMissing ? inspection.rightWord : inspection.storedWord) << " hex"
      << (format.checkWordMissing ? ", beim Laden eingesetzt" : "") << "\n";
}

/// Of a file that is no program only the fault is told.
void WriteJson(const DeviceKind* kind, const ProgramInspection& inspection, const Findings& found,
               Console& console) {
  Json json{{"fine", found.faults.empty()}, {"for", nullptr},
            {"records", nullptr},           {"bytes", nullptr},
            {"storedCheckWord", nullptr},   {"checkWord", nullptr},
            {"faults", found.faults},       {"warnings", found.warnings}};
  if (kind != nullptr) {
    json["for"] = kind->name;
    json["records"] = kind->program.format.records;
    json["bytes"] = kind->program.format.ProgramSize();
    json["storedCheckWord"] = inspection.storedWord;
    json["checkWord"] = inspection.rightWord;
  }
  WriteJsonDocument(json, console);
}

struct Options {
  std::string path;
  bool json = false;
};

ExitStatus ShowProgram(const Options& options, Console& console) {
  const auto [kind, file, fault] = ReadProgram(console, options.path);
  if (kind == nullptr) {
    if (options.json) WriteJson(nullptr, {}, {.faults = {fault}, .warnings = {}}, console);
    return ExitStatus::kFailed;
  }
  const ProgramFormat& format = kind->program.format;
  const ProgramInspection inspection = InspectProgramFile(file, format);
  const Findings found = FindingsIn(inspection, format);
  if (options.json) {
    WriteJson(kind, inspection, found, console);
  } else {
    WriteText(options.path, *kind, inspection, found, console.output);
  }
  if (found.faults.empty()) return ExitStatus::kFine;
  return console.Fail(ProgramFileFault(ProgramFileStatus::kChecksumError, options.path));
}

}  // namespace

Action DefineProgram(CLI::App& app) {
  auto options = std::make_shared<Options>();
  TakeFile(app, options->path, "Programm, .pro oder .pr3");
  TakeJson(app, options->json);
  return [options](Console& console) { return ShowProgram(*options, console); };
}

}  // namespace ox::tool
