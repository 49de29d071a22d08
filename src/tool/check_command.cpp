// oxtool check: are the station tables in order?
#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/line_ends.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_file.h"
#include "tables/zuo_table.h"
#include "tool/commands.h"

namespace ox::tool {
namespace {

struct Kind {
  std::string_view ending;
  Bytes (*parse)(const TableText&, TableMessages&);
};

constexpr Kind kKinds[] = {{".mes", ParseMesTable}, {".par", ParseParTable}, {".zuo", ParseZuoTable}};

class Lines : public TableMessages {
 public:
  Lines(Console& console, std::string path) : console_(console), path_(std::move(path)) {}

  void Show(const std::string& text) override {
    console_.output << path_ << ": " << text.substr(0, text.find(kCr)) << "\n";
  }
  bool Confirm(const std::string& text) override { return Show(text), true; }

 private:
  Console& console_;
  std::string path_;
};

ExitStatus CheckFile(const std::string& path, Console& console) {
  const auto* kind =
      std::ranges::find_if(kKinds, [&](const Kind& each) { return path.ends_with(each.ending); });
  if (kind == std::end(kKinds)) return console.Fail(path + ": *.mes, *.par oder *.zuo erwartet");
  const auto text = ReadTableText(console.machine.files, path);
  if (!text) return console.Fail(path + ": lässt sich nicht lesen");
  Lines lines(console, path);
  return kind->parse(*text, lines).empty() ? ExitStatus::kFailed : ExitStatus::kFine;
}

}  // namespace

Action DefineCheck(CLI::App& app) {
  auto paths = std::make_shared<std::vector<std::string>>();
  app.add_option("DATEI", *paths, "Tabellen (*.mes, *.par, *.zuo)")->required();
  return [paths](Console& console) {
    ExitStatus status = ExitStatus::kFine;
    for (const std::string& path : *paths) status = std::max(status, CheckFile(path, console));
    return status;
  };
}

}  // namespace ox::tool
