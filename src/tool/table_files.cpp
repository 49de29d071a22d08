// Reading table files with all their faults.
#include "tool/table_files.h"

#include <algorithm>
#include <utility>

#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_cursor.h"
#include "tables/table_summary.h"
#include "tables/zuo_table.h"
#include "tool/files.h"

namespace ox::tool {
namespace {

constexpr std::size_t kMostFaults = 10000;  // what nobody reads to its end

struct Kind {
  std::string_view ending;
  char firstMark;
  Bytes (*parse)(const TableText&, TableMessages&);
  std::string (*describe)(BytesView);
};

/// In the order of TableKind.
constexpr std::array<Kind, kTableKinds> kKinds{{{".mes", 'S', ParseMesTable, DescribePointTable},
                                                {".par", 'P', ParseParTable, DescribeParameterList},
                                                {".zuo", 'N', ParseZuoTable, DescribeAssignmentTable}}};

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

bool EndsIn(std::string_view path, std::string_view ending) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  if (path.size() < ending.size()) return false;
  return std::ranges::equal(path.substr(path.size() - ending.size()), ending, {}, lower);
}

/// Null when the name does not tell it.
const Kind* KindOfName(std::string_view path) {
  const auto kind = std::ranges::find_if(kKinds, [&](const Kind& each) { return EndsIn(path, each.ending); });
  return kind != kKinds.end() ? &*kind : nullptr;
}

/// Null when the first mark does not tell it.
const Kind* KindOfText(const TableText& text) {
  const char mark = TableCursor(text.Characters()).FindControlMark();
  const auto kind = std::ranges::find(kKinds, mark, &Kind::firstMark);
  return kind != kKinds.end() ? &*kind : nullptr;
}

/// The kind of a table, which is read for that where its name does not tell it; null, and the user told, when
/// it is of none.
const Kind* KindOf(const Console& console, LoadedTable& table) {
  if (const Kind* named = KindOfName(table.path)) return named;
  const auto content = ReadFileOrPipe(console.machine.files, table.path, kMaxTable);
  if (content) table.text.emplace(*content);
  const Kind* kind = content ? KindOfText(*table.text) : nullptr;
  if (kind == nullptr) {
    console.WrongUse("TABELLE: " + table.path + " endet nicht auf .mes, .par oder .zuo" +
                     (content ? " und beginnt nicht mit /S/, /P/ oder /N/" : ""));
  }
  return kind;
}

void Parse(const Console& console, const Kind& kind, LoadedTable& table) {
  if (!table.text) {
    const auto content = ReadInput(console, table.path, kMaxTable).content;
    if (!content) return;
    table.text.emplace(*content);
  }
  FaultCollector collector(*table.text, table.faults);
  table.packed = kind.parse(*table.text, collector);
}

}  // namespace

bool TableSet::Complete() const {
  return std::ranges::all_of(tables, [](const auto& table) { return table != nullptr && table->Sound(); });
}

std::optional<TableSet> LoadTables(const Console& console, const std::vector<std::string>& paths) {
  TableSet set;
  std::vector<std::pair<const Kind*, LoadedTable*>> given;
  for (const std::string& path : paths) {
    auto table = std::make_unique<LoadedTable>();
    table->path = path;
    const Kind* kind = KindOf(console, *table);
    if (kind == nullptr) return std::nullopt;
    auto& place = set.tables[static_cast<std::size_t>(kind - kKinds.data())];
    if (place != nullptr) {
      console.WrongUse("zwei Tabellen derselben Art");
      return std::nullopt;
    }
    place = std::move(table);
    given.emplace_back(kind, place.get());
  }
  for (const auto& [kind, table] : given) Parse(console, *kind, *table);
  return set;
}

std::string DescribeTable(TableKind kind, BytesView packed) {
  return kKinds[static_cast<std::size_t>(kind)].describe(packed);
}

}  // namespace ox::tool
