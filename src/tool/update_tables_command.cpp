// oxtool update-tables: writes three station tables into a device.
#include <algorithm>
#include <array>
#include <memory>

#include "programming/table_update.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/zuo_table.h"
#include "tool/commands.h"
#include "tool/told_tables.h"
#include "tool/update_console.h"

namespace ox::tool {
namespace {

struct Kind {
  std::string_view ending;
  Bytes (*parse)(const TableText& text, TableMessages& messages);
};
constexpr std::array kKinds{Kind{".mes", ParseMesTable}, Kind{".par", ParseParTable},
                            Kind{".zuo", ParseZuoTable}};
/// Packed, in the order of the kinds.
using Tables = std::array<Bytes, kKinds.size()>;

struct Options {
  DeviceOptions device;
  UpdateOptions update;
  std::vector<std::string> paths;
};

/// Of each kind the path that has its ending; empty where there is none or more than one.
std::string PathOf(const Kind& kind, const std::vector<std::string>& paths) {
  const auto fits = [&](const std::string& path) { return path.ends_with(kind.ending); };
  return std::ranges::count_if(paths, fits) == 1 ? *std::ranges::find_if(paths, fits) : std::string();
}

/// False after every faulty table was told.
bool LoadTables(const Console& console, const std::vector<std::string>& paths, Tables& tables) {
  bool good = true;
  for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
    tables.at(kind) = LoadTable(console, PathOf(kKinds.at(kind), paths), kKinds.at(kind).parse);
    good = good && !tables.at(kind).empty();
  }
  return good;
}

/// Tells what building the images says; they need no device.
struct ToldImages : UpdateObserver {
  explicit ToldImages(const Console& toldOn) : console(toldOn) {}
  void StartMarks() override {}
  void Mark() override {}
  void Tell(std::string_view message) override { console.Fail(message); }
  const Console& console;
};

ExitStatus UpdateTables(const Options& options, Console& console) {
  const auto given = [&](const Kind& kind) { return !PathOf(kind, options.paths).empty(); };
  if (options.paths.size() != kKinds.size() || !std::ranges::all_of(kKinds, given))
    return console.WrongUse("je eine Datei *.mes, *.par und *.zuo erwartet");
  Tables tables;
  if (!LoadTables(console, options.paths, tables)) return ExitStatus::kFailed;
  ToldMessages messages(console, {}, options.update.yes);
  ToldImages building(console);
  const auto images = BuildLinkedImages({tables[0], tables[1], tables[2]}, messages, building);
  if (!images) return ExitStatus::kFailed;
  DeviceSession session(console, options.device);
  const bool writes = !options.update.dryRun;
  const auto run = writes ? RunTableUpdate : RehearseTableUpdate;
  return RunOnConsole(
      console, session, writes, [&] { return session.Search(); },
      [&](LoaderLink& link, const DeviceSearch& search, UpdateObserver& observer) {
        return run(link, search, *images, observer);
      });
}

}  // namespace

Action DefineUpdateTables(CLI::App& app) {
  auto options = std::make_shared<Options>();
  DefineDeviceOptions(app, options->device);
  DefineUpdateOptions(app, options->update);
  AddOption(app, "DATEI", options->paths, "die drei Stationstabellen (*.mes, *.par, *.zuo)").Required();
  return [options](Console& console) { return UpdateTables(*options, console); };
}

}  // namespace ox::tool
