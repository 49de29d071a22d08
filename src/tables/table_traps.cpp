// The traps, each looked for in the fields of one table or of two.
#include "tables/table_traps.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "platform/line_ends.h"
#include "platform/text.h"
#include "tables/image_sections.h"
#include "tables/linking.h"
#include "tables/packed_tables.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

constexpr std::string_view kNoImage = ": kein Abbild für Generation III";

/// Notes a field whose value a field of the same mark had before: `before` and `behind` frame the line of the
/// first one.
class Doubles {
 public:
  Doubles(char mark, std::string before, std::string behind)
      : mark_(mark), before_(std::move(before)), behind_(std::move(behind)) {}

  void Look(const TableField& field, TableTraps& traps) {
    if (field.mark != mark_) return;
    const auto [first, isNew] = lines_.emplace(field.value, field.line);
    if (isNew) return;
    traps.push_back({field.line, ToText(field.value) + before_ + std::to_string(first->second) + behind_});
  }

 private:
  char mark_;
  std::string before_;
  std::string behind_;
  std::unordered_map<BytesView, int> lines_;
};

std::unordered_set<BytesView> Numbers(const TableFields& fields) {
  std::unordered_set<BytesView> numbers;
  for (const TableField& field : fields) {
    if (field.mark == 'N') numbers.insert(field.value);
  }
  return numbers;
}

/// The numbers of `fields` that `others` have not.
TableTraps Missing(const TableFields& fields, const TableFields& others, std::string_view told) {
  const std::unordered_set<BytesView> known = Numbers(others);
  TableTraps traps;
  for (const TableField& field : fields) {
    if (field.mark != 'N' || known.contains(field.value)) continue;
    traps.push_back({field.line, "Messstelle " + ToText(field.value).append(told)});
  }
  return traps;
}

}  // namespace

TableTraps PointTableTraps(const TableFields& points) {
  TableTraps traps;
  Doubles doubles('N', " ist als Messstelle schon in Zeile ", " aufgeführt");
  const TableField* office = nullptr;  // nothing stands between its code and its end yet
  for (const TableField& field : points) {
    doubles.Look(field, traps);
    if (field.mark == 'A') office = &field;
    if (field.mark == 'N') office = nullptr;
    if (field.mark == 'B' && office != nullptr) {
      traps.push_back({field.line, "Amt " + ToText(office->value) +
                                       " ohne Messstellen: Abrufe zu seinem Kennzeichen bringen nichts"});
    }
    if (field.mark == 'Z' && DigitsOnly(field.value).empty()) {
      traps.push_back({field.line, std::string("Amtskennzeichen nicht nur aus Ziffern").append(kNoImage)});
    }
    if (field.mark == 'S' && field.value.size() > kVersionShown) {
      traps.push_back({field.line, "Tabellenstand länger als " + std::to_string(kVersionShown) +
                                       " Zeichen: Generation III erhält nur diese"});
    }
  }
  return traps;
}

TableTraps ParameterListTraps(const TableFields& parameters) {
  TableTraps traps;
  Doubles doubles('P', " ist als Parameter schon in Zeile ", " aufgeführt");
  for (const TableField& field : parameters) {
    doubles.Look(field, traps);
    if (field.mark != 'M' || field.value.size() == kUnitLength) continue;
    traps.push_back({field.line, std::string("Maßeinheit kürzer als drei Zeichen").append(kNoImage) +
                                     ", und spätere Parameter werden nicht gefunden"});
  }
  return traps;
}

TableTraps AssignmentTableTraps(const TableFields& assignments) {
  TableTraps traps;
  Doubles doubles('N', " ist schon in Zeile ", " zugeordnet; diese Zuordnung gilt nicht");
  for (const TableField& field : assignments) doubles.Look(field, traps);
  return traps;
}

TableTraps PointsWithoutAssignment(const TableFields& points, const TableFields& assignments) {
  return Missing(points, assignments, std::string(" ohne Zuordnung").append(kNoImage));
}

TableTraps AssignmentsToNothing(const TableFields& points, const TableFields& assignments) {
  return Missing(assignments, points, " steht nicht in der Messstellentabelle; die Zuordnung gilt nicht");
}

TableTraps UndefinedParameters(const TableFields& assignments, BytesView parameters) {
  TableTraps faults;
  std::unordered_set<BytesView> looked;
  for (const TableField& field : assignments) {
    if (field.mark != 'P') continue;
    for (BytesView list = field.value; !list.empty();) {
      const BytesView number = list.substr(0, kParameterNumberLength);
      list.remove_prefix(std::min(list.size(), kParameterNumberLength + 1));
      if (!looked.insert(number).second || FindParameter(number, parameters)) continue;
      faults.push_back({field.line, "Abbruch: Die Parameternummer " + ToText(number) +
                                        " wird in der Zuordnungstabelle verwendet, ist in der "
                                        "Parameterliste aber nicht definiert!"});
    }
  }
  return faults;
}

TableTraps LineEndsReadAsMarks(const TableText& text, const std::vector<int>& lines) {
  TableTraps traps;
  const BytesView characters = text.Characters();
  int line = 0;  // the one that ends at `end`
  std::size_t end = BytesView::npos;
  for (const int wanted : lines) {
    for (; line < wanted; ++line) end = characters.find(kCr, end + 1);
    if (end == BytesView::npos) break;
    if (end == 0 || characters[end - 1] != '/' || characters[end + 1] != '/') continue;
    traps.push_back({wanted,
                     "das Zeilenende zwischen zwei Schrägstrichen gilt als Steuerzeichen; ein Wort "
                     "am Ende der Zeile oder eine Leerzeile danach hilft"});
  }
  return traps;
}

}  // namespace ox
