// oxtool tables: what stands in an image.
#include <memory>
#include <ostream>

#include "platform/hex_text.h"
#include "tables/content_text.h"
#include "tables/image_fill.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/files.h"
#include "tool/json_output.h"

namespace ox::tool {
namespace {

/// What the tables may have had and an image has not.
constexpr std::string_view kNotInImage =
    "Im Abbild nicht zu unterscheiden, hier steht das erste: Ä und [, Ö und \\, Ü und ], ä und {, ö und |, ü "
    "und }, ß und ~.\nBlanks am Ende von Namen fehlen. Die Zuordnung ist die der Messstellen: was keiner "
    "Messstelle galt, fehlt.\n";
constexpr std::string_view kNotInGeneration3 =
    "Vom Tabellenstand bleiben 12 Zeichen; ob eine Differenz -0000 hieß, ist nicht zu sehen. Von Ämtern mit "
    "gleichem Kennzeichen hintereinander hat das erste alle Messstellen.\n";

std::string Name(const ImageContent& content) {
  return content.generation3 ? "OX III" : "OX II";
}

void WriteText(const ImageContent& content, Console& console) {
  console.output << "Abbild für " << Name(content) << ", " << DescribeShare(content.bodySize) << "\n"
                 << kNotInImage;
  if (content.generation3) console.output << kNotInGeneration3;
  console.output << "\nMessstellentabelle\n"
                 << PointTableText(content.tables) << "\nParameterliste\n"
                 << ParameterListText(content.tables) << "\nZuordnungstabelle\n"
                 << AssignmentTableText(content.tables);
}

Json PointJson(const PointContent& point) {
  return {{"number", point.number},
          {"first", point.first},
          {"second", point.second},
          {"name", ShownText(point.name)},
          {"parameters", point.parameters}};
}

void WriteJson(const ImageContent& content, Console& console) {
  const TableContent& tables = content.tables;
  Json json{{"for", Name(content)},
            {"bytes", content.bodySize},
            {"version", ShownText(tables.version)},
            {"faults", content.faults}};
  json["offices"] = Json::array();
  for (const OfficeContent& office : tables.offices) {
    Json points = Json::array();
    for (const PointContent& point : office.points) points.push_back(PointJson(point));
    json["offices"].push_back(
        {{"name", ShownText(office.name)}, {"code", ShownText(office.code)}, {"points", points}});
  }
  json["parameters"] = Json::array();
  for (const ParameterContent& parameter : tables.parameters) {
    json["parameters"].push_back({{"number", ShownText(parameter.number)},
                                  {"designation", ShownText(parameter.designation)},
                                  {"unit", ShownText(parameter.unit)}});
  }
  WriteJsonDocument(json, console);
}

struct Options {
  std::string path;
  bool json = false;
};

ExitStatus ShowTables(const Options& options, Console& console) {
  const auto image = ReadInput(console, options.path, kImageSize);
  if (!image) return ExitStatus::kFailed;
  const ImageContent content = ReadTableImage(*image);
  for (const std::string& fault : content.faults) console.Fail(options.path + ": " + fault);
  const bool readable = content.bodySize > 0;
  if (readable && options.json) WriteJson(content, console);
  if (readable && !options.json) WriteText(content, console);
  return content.faults.empty() ? ExitStatus::kFine : ExitStatus::kFailed;
}

}  // namespace

Action DefineTables(CLI::App& app) {
  auto options = std::make_shared<Options>();
  TakeFile(app, options->path, "Abbild, wie oxtool image es schreibt");
  TakeJson(app, options->json);
  return [options](Console& console) { return ShowTables(*options, console); };
}

}  // namespace ox::tool
