// Reading table files with all their faults.
#include "tool/table_files.h"

#include <algorithm>

#include "platform/line_ends.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_summary.h"
#include "tables/zuo_table.h"
#include "tool/files.h"

namespace ox::tool {
namespace {

/// A thousand times what a device can hold.
constexpr std::size_t kMaxTable = std::size_t{16} * 1024 * 1024;  // bytes
constexpr std::size_t kMostFaults = 10000;                        // what nobody reads to its end

struct Kind {
  std::string_view ending;
  Bytes (*parse)(const TableText&, TableMessages&);
  std::string (*describe)(BytesView);
};

/// In the order of TableKind.
constexpr std::array<Kind, kTableKinds> kKinds{{{".mes", ParseMesTable, DescribePointTable},
                                                {".par", ParseParTable, DescribeParameterList},
                                                {".zuo", ParseZuoTable, DescribeAssignmentTable}}};

/// Collects what a parser finds.
class FaultCollector : public TableMessages {
 public:
  FaultCollector(const TableText& text, std::vector<TableFault>& faults)
      : binary_(text.Characters().find('\0') != BytesView::npos), faults_(faults) {}

  void Show(const std::string& text) override { faults_.push_back({0, text}); }
  bool Confirm(const std::string& text) override { return Show(text), true; }
  void ShowFault(int line, std::string_view specific, const TableText& /*text*/) override {
    constexpr std::string_view kLead = ", ";
    faults_.push_back({line, std::string(specific.substr(kLead.size()))});
    if (binary_) Show("hat Zeichen mit dem Code 0, ist also kein Text; weiter wird nicht gesucht");
    if (faults_.size() == kMostFaults) Show("zu viele Fehler; weiter wird nicht gesucht");
  }
  bool WantsFurtherFaults() const override { return !binary_ && faults_.size() < kMostFaults; }

 private:
  bool binary_;
  std::vector<TableFault>& faults_;
};

void Load(const Console& console, const Kind& kind, LoadedTable& table) {
  const auto content = ReadInput(console, table.path, kMaxTable);
  if (!content) return;
  table.text.emplace(*content);
  FaultCollector collector(*table.text, table.faults);
  table.packed = kind.parse(*table.text, collector);
}

}  // namespace

std::optional<TableKind> KindOfTable(std::string_view path) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  for (std::size_t kind = 0; kind < kTableKinds; ++kind) {
    const std::string_view ending = kKinds[kind].ending;
    if (path.size() < ending.size()) continue;
    const std::string_view own = path.substr(path.size() - ending.size());
    if (std::ranges::equal(own, ending, {}, lower)) return static_cast<TableKind>(kind);
  }
  return std::nullopt;
}

std::string TableNameFault(const std::string& path) {
  return KindOfTable(path) ? "" : path + " endet nicht auf .mes, .par oder .zuo";
}

bool TableSet::Complete() const {
  return std::ranges::all_of(tables, [](const auto& table) { return table != nullptr && table->Sound(); });
}

bool TwoOfAKind(const std::vector<std::string>& paths) {
  std::vector<std::optional<TableKind>> kinds(paths.size());
  std::ranges::transform(paths, kinds.begin(), KindOfTable);
  std::ranges::sort(kinds);
  return std::ranges::adjacent_find(kinds) != kinds.end();
}

TableSet LoadTables(const Console& console, const std::vector<std::string>& paths) {
  TableSet set;
  for (const std::string& path : paths) {
    const auto kind = static_cast<std::size_t>(KindOfTable(path).value());
    set.tables[kind] = std::make_unique<LoadedTable>();
    set.tables[kind]->path = path;
    Load(console, kKinds[kind], *set.tables[kind]);
  }
  return set;
}

std::string DescribeTable(TableKind kind, BytesView packed) {
  return kKinds[static_cast<std::size_t>(kind)].describe(packed);
}

}  // namespace ox::tool
