// oxtool check: are the station tables in order?
#include <algorithm>
#include <memory>
#include <ostream>

#include "programming/device_kind.h"
#include "tables/image_fill.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/json_output.h"
#include "tool/table_check.h"

namespace ox::tool {
namespace {

/// "3 Fehler, 1 Warnung".
std::string Counts(const TableReport& report) {
  const std::size_t warnings = report.warnings.size();
  return std::to_string(report.faults.size()) + " Fehler, " + std::to_string(warnings) +
         (warnings == 1 ? " Warnung" : " Warnungen");
}

void WriteText(const TableReport& report, Console& console) {
  std::ostream& out = console.output;
  WriteFindings(report, out, console.ColoursOnOutput());
  for (const Finding& file : report.summaries) {
    out << file.path << ": " << (file.text.empty() ? "nicht in Ordnung" : file.text) << "\n";
  }
  for (const DeviceKind& kind : DeviceKinds()) {
    if (!report.images) break;
    out << "Abbild für " << kind.name << ": " << DescribeFill((*report.images).*kind.tables.image) << "\n";
  }
  out << Counts(report) << "\n";
}

void WriteJson(const TableReport& report, bool fine, Console& console) {
  const auto findings = [](const std::vector<Finding>& all) {
    Json list = Json::array();
    for (const auto& [path, line, text] : all) {
      list.push_back({{"file", path}, {"line", line == 0 ? Json() : Json(line)}, {"text", text}});
    }
    return list;
  };
  Json json{{"fine", fine}, {"faults", findings(report.faults)}, {"warnings", findings(report.warnings)}};
  json["files"] = Json::array();
  for (const Finding& file : report.summaries) {
    json["files"].push_back({{"file", file.path}, {"fine", !file.text.empty()}, {"holds", file.text}});
  }
  json["images"] = Json::array();
  for (const DeviceKind& kind : DeviceKinds()) {
    if (!report.images) break;
    const TableImage& image = (*report.images).*kind.tables.image;
    json["images"].push_back({{"for", kind.name},
                              {"built", image.status == ImageStatus::kBuilt},
                              {"bytes", image.bodySize},
                              {"room", kMaxImageBody}});
  }
  WriteJsonDocument(json, console);
}

}  // namespace

Action DefineCheck(CLI::App& app) {
  struct Options {
    std::vector<std::string> paths;
    bool json = false;
  };
  auto options = std::make_shared<Options>();
  TakeTables(app, options->paths).Words(1, kTableKinds);
  TakeJson(app, options->json);
  return [options](Console& console) {
    const auto set = LoadTables(console, options->paths);
    if (!set) return ExitStatus::kWrongUse;
    const TableReport report = CheckTables(*set);
    const bool fine =
        report.faults.empty() && std::ranges::none_of(report.summaries, &std::string::empty, &Finding::text);
    if (options->json) {
      WriteJson(report, fine, console);
    } else {
      WriteText(report, console);
    }
    return fine ? ExitStatus::kFine : ExitStatus::kFailed;
  };
}

}  // namespace ox::tool
