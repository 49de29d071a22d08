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

bool Readable(const ImageContent& content) {
  return content.bodySize > 0;
}

/// Of what is no image only the faults are told.
void WriteJson(const ImageContent& content, Console& console) {
  const TableContent& tables = content.tables;
  Json json{{"for", nullptr}, {"bytes", nullptr}, {"version", nullptr}, {"faults", content.faults}};
  if (Readable(content)) {
    json["for"] = Name(content);
    json["bytes"] = content.bodySize;
    json["version"] = ShownText(tables.version);
  }
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
  const auto [image, unread] = ReadInput(console, options.path, kImageSize);
  ImageContent content;
  if (image) {
    content = ReadTableImage(*image);
    for (const std::string& fault : content.faults) console.Fail(options.path + ": " + fault);
  } else {
    content.faults = {unread};
  }
  if (options.json) {
    WriteJson(content, console);
  } else if (Readable(content)) {
    WriteText(content, console);
  }
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
