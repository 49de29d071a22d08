// Faults, traps and images of a set of tables.
#include "tool/table_check.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "programming/device_kind.h"
#include "tables/linking.h"

namespace ox::tool {
namespace {

/// Keeps what linking refuses. A point without assignment is no reason: it is warned of with its line.
class LinkMessages : public TableMessages {
 public:
  LinkMessages(std::string path, std::vector<Finding>& faults) : path_(std::move(path)), faults_(faults) {}

  void Show(const std::string& text) override { faults_.push_back({path_, 0, text}); }
  bool Confirm(const std::string& /*text*/) override { return true; }

 private:
  std::string path_;
  std::vector<Finding>& faults_;
};

void Append(std::vector<Finding>& findings, const LoadedTable& table, const TableTraps& traps) {
  for (const auto& [line, text] : traps) findings.push_back({table.path, line, text});
}

void TellFaults(const LoadedTable& table, TableReport& report) {
  std::vector<int> lines;
  for (const auto& [line, text] : table.faults) {
    report.faults.push_back({table.path, line, text});
    if (lines.empty() || line > lines.back()) lines.push_back(line);
  }
  Append(report.warnings, table, LineEndsReadAsMarks(*table.text, lines));
}

bool Sound(const LoadedTable* table) {
  return table != nullptr && table->Sound();
}

TableFields FieldsOf(const LoadedTable* table) {
  return Sound(table) ? ReadTableFields(*table->text) : TableFields();
}

TableTraps TrapsOf(TableKind kind, const TableFields& fields) {
  switch (kind) {
    case TableKind::kPoints:
      return PointTableTraps(fields);
    case TableKind::kParameters:
      return ParameterListTraps(fields);
    case TableKind::kAssignments:
      return AssignmentTableTraps(fields);
  }
  return {};
}

void CheckFit(const TableSet& set, TableReport& report) {
  const LoadedTable* points = set.Of(TableKind::kPoints);
  const LoadedTable* assignments = set.Of(TableKind::kAssignments);
  if (!Sound(points) || !Sound(assignments)) return;
  const TableFields pointFields = FieldsOf(points);
  const TableFields assignmentFields = FieldsOf(assignments);
  Append(report.warnings, *points, PointsWithoutAssignment(pointFields, assignmentFields));
  Append(report.warnings, *assignments, AssignmentsToNothing(pointFields, assignmentFields));
}

/// Whether the parameter list, sound like the assignment table, defines all that is assigned; what is wrong
/// stands among the faults otherwise.
bool ParametersFit(const TableSet& set, std::vector<Finding>& faults) {
  const LoadedTable& assignments = *set.Of(TableKind::kAssignments);
  const LoadedTable& parameters = *set.Of(TableKind::kParameters);
  const TableFields assigned = FieldsOf(&assignments);
  // An empty list is one fault, as in the window, and not one for each number.
  const TableTraps undefined =
      FieldsOf(&parameters).empty() ? TableTraps() : UndefinedParameters(assigned, parameters.packed);
  Append(faults, assignments, undefined);
  LinkMessages messages(assigned.empty() ? assignments.path : parameters.path, faults);
  return undefined.empty() && CheckAssignmentParameters(assignments.packed, parameters.packed, messages);
}

void BuildImages(const TableSet& set, TableReport& report) {
  const Bytes linked = LinkTables(set, report.faults);
  if (linked.empty()) return;
  report.images = BuildTableImages(linked, set.Of(TableKind::kParameters)->packed);
  for (const DeviceKind& kind : DeviceKinds()) {
    if (((*report.images).*kind.tables.image).status != ImageStatus::kOverflow) continue;
    report.faults.push_back({set.Of(TableKind::kPoints)->path, 0, std::string(kind.tables.overflow)});
  }
}

}  // namespace

void WriteFindings(const TableReport& report, std::ostream& to, bool colours) {
  const auto place = [](const Finding& finding) {
    return finding.path + ":" + (finding.line == 0 ? " " : std::to_string(finding.line) + ": ");
  };
  const char* red = colours ? "\033[31m" : "";
  const char* yellow = colours ? "\033[33m" : "";
  const char* plain = colours ? "\033[0m" : "";
  for (const Finding& fault : report.faults) to << place(fault) << red << fault.text << plain << "\n";
  for (const Finding& warning : report.warnings) {
    to << place(warning) << yellow << "Warnung: " << plain << warning.text << "\n";
  }
}

Bytes LinkTables(const TableSet& set, std::vector<Finding>& faults) {
  if (!ParametersFit(set, faults)) return {};
  const LoadedTable& points = *set.Of(TableKind::kPoints);
  LinkMessages messages(points.path, faults);
  return AttachAssignments(points.packed, set.Of(TableKind::kAssignments)->packed, messages);
}

TableReport CheckTables(const TableSet& set) {
  TableReport report;
  for (std::size_t kind = 0; kind < kTableKinds; ++kind) {
    const LoadedTable* table = set.tables[kind].get();
    if (table == nullptr) continue;
    const auto tableKind = static_cast<TableKind>(kind);
    if (table->text) TellFaults(*table, report);
    Append(report.warnings, *table, TrapsOf(tableKind, FieldsOf(table)));
    report.summaries.push_back(
        {table->path, 0, table->Sound() ? DescribeTable(tableKind, table->packed) : ""});
  }
  CheckFit(set, report);
  if (set.Complete()) {
    BuildImages(set, report);
  } else if (Sound(set.Of(TableKind::kParameters)) && Sound(set.Of(TableKind::kAssignments))) {
    ParametersFit(set, report.faults);
  }
  std::ranges::stable_sort(report.warnings, {}, [&](const Finding& each) {
    const auto file = std::ranges::find(report.summaries, each.path, &Finding::path);
    return std::pair(file - report.summaries.begin(), each.line);
  });
  return report;
}

}  // namespace ox::tool
