// oxtool image: the tables as a device takes them.
#include <memory>
#include <ostream>

#include "programming/device_kind.h"
#include "tables/image_fill.h"
#include "tool/commands.h"
#include "tool/common_options.h"
#include "tool/files.h"
#include "tool/table_check.h"

namespace ox::tool {
namespace {

struct Options {
  std::string generation;
  std::vector<std::string> paths;
  std::string output;
};

std::string GenerationFault(const std::string& generation) {
  return generation == "2" || generation == "3" ? "" : generation + " geht nicht, 2 oder 3 erwartet";
}

ExitStatus MakeImage(const Options& options, Console& console) {
  const auto set = LoadTables(console, options.paths);
  if (!set) return ExitStatus::kWrongUse;
  const TableReport report = CheckTables(*set);
  WriteFindings(report, console.messages, console.ColoursOnMessages());
  // As in the window, tables that are too many for one generation are written for none.
  if (!report.faults.empty() || !report.images) return ExitStatus::kFailed;
  const DeviceKind& kind = *FindDeviceKind("OX " + options.generation);
  const TableImage& image = (*report.images).*kind.tables.image;
  if (image.status == ImageStatus::kUnusable) return console.Fail(std::string(kind.tables.unusable));
  const ExitStatus written = WriteOutput(console, options.output, image.bytes, options.paths);
  if (written == ExitStatus::kFine) {
    console.Say(options.output + ": Abbild für " + std::string(kind.name) + ", " + DescribeFill(image));
  }
  return written;
}

}  // namespace

Action DefineImage(CLI::App& app) {
  auto options = std::make_shared<Options>();
  AddOption(app, "--generation", options->generation, "Generation der Geräte")
      .Takes("2|3")
      .Required()
      .Checked(GenerationFault);
  TakeTables(app, options->paths).Words(kTableKinds, kTableKinds);
  TakeOutput(app, options->output);
  return [options](Console& console) { return MakeImage(*options, console); };
}

}  // namespace ox::tool
