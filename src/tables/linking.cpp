// Checks the loaded tables against each other and joins points with their parameters.
#include "tables/linking.h"

#include <unordered_set>

#include "platform/text.h"
#include "tables/packed_cursor.h"
#include "tables/packed_tables.h"

namespace ox {
namespace {

/// A shorter table holds nothing.
constexpr std::size_t kSmallestTable = 8;

constexpr BytesView kEntryTail{"\0\xFF", 2};

bool IsEntry(BytesView entry) {
  return entry.size() == kEntryLength && entry.substr(kEntryTextLength) == kEntryTail;
}

/// The next parameter number; less than four characters where the assignment or the table ends within it.
BytesView TakeParameterNumber(PackedCursor& cursor) {
  const BytesView number = cursor.Take(kParameterNumberLength);
  return number.substr(0, number.find(kNul));
}

Bytes Abort(TableMessages& messages, const char* text) {
  messages.Show(text);
  return {};
}

}  // namespace

bool CheckAssignmentParameters(BytesView assignments, BytesView parameters, TableMessages& messages) {
  if (assignments.size() < kSmallestTable) {
    messages.Show("Abbruch(1): Zuordnungstabelle leer!");
    return false;
  }
  if (parameters.size() < kSmallestTable) {
    messages.Show("Abbruch(2): Parameterliste leer!");
    return false;
  }
  std::unordered_set<BytesView> defined;  // each number is looked up in the list once
  PackedCursor cursor(assignments);
  while (!cursor.AtNul()) {
    cursor.Take(kPointNumberLength);
    // Where the table breaks off, the last number is incomplete, and no list defines it.
    while (!cursor.Skip({&kNul, 1})) {
      const BytesView number = TakeParameterNumber(cursor);
      if (defined.contains(number)) continue;
      if (!FindParameter(number, parameters)) {
        messages.Show(
            "Abbruch: Die Parameternummer " + ToText(number) +
            " wird in der Zuordnungstabelle verwendet, ist in der Parameterliste aber nicht definiert!");
        return false;
      }
      defined.insert(number);
    }
  }
  return true;
}

bool FindParameter(BytesView number, BytesView parameters) {
  for (std::size_t entry = 0; entry + kParameterNumberLength <= parameters.size();
       entry += kParameterStride) {
    if (parameters[entry] == kNul) return false;
    if (parameters.substr(entry, kParameterNumberLength) == number) return true;
  }
  return false;
}

AssignmentIndex IndexAssignments(BytesView assignments) {
  AssignmentIndex index;
  PackedCursor cursor(assignments);
  while (!cursor.AtNul()) {
    const BytesView pointNumber = cursor.Take(kPointNumberLength);
    const auto digits = cursor.TakeField();
    if (!digits) break;
    index.emplace(pointNumber, *digits);
  }
  return index;
}

std::optional<BytesView> FindAssignment(BytesView pointNumber, const AssignmentIndex& index,
                                        TableMessages& messages) {
  const auto assignment = index.find(pointNumber);
  if (assignment == index.end()) {
    const bool goOn = messages.Confirm("Warnung: Zur Messstellennummer " + ToText(pointNumber) +
                                       " wurde keine Zuordnung gefunden!");
    return goOn ? std::optional(BytesView()) : std::nullopt;
  }
  const BytesView digits = assignment->second;
  if (digits.empty() || digits.size() % kParameterNumberLength != 0) {
    messages.Show("Warnung: Fehler in der Zuordnung zur Messstellennummer " + ToText(pointNumber));
    return BytesView();
  }
  return digits;
}

Bytes AttachAssignments(BytesView points, BytesView assignments, TableMessages& messages) {
  if (assignments.size() < kSmallestTable) return Abort(messages, "Abbruch(3): Zuordnungstabelle leer!");
  if (points.size() < kSmallestTable) return Abort(messages, "Abbruch(4): Messstellentabelle leer!");

  PackedCursor cursor(points);
  if (!cursor.SkipToNulPair()) return Abort(messages, "Abbruch(5): Messstellentabelle leer!");

  const AssignmentIndex index = IndexAssignments(assignments);
  Bytes linked;
  std::size_t copied = 0;  // so much of `points` is in `linked`
  do {
    const bool name = cursor.TakeField().has_value();
    const bool code = cursor.TakeField().has_value();
    if (!name || !code) return Abort(messages, "Abbruch(6): Messstellentabelle fehlerhaft!");

    while (!cursor.AtNul()) {
      const BytesView entry = cursor.Take(kEntryLength);
      if (!IsEntry(entry)) return Abort(messages, "Abbruch(7): Messstellentabelle fehlerhaft!");
      const auto parameters = FindAssignment(entry.substr(0, kPointNumberLength), index, messages);
      if (!parameters) return {};
      const std::size_t entryEnd = cursor.Position() - 1;  // where its 255 stands
      linked.append(points.substr(copied, entryEnd - copied)).append(*parameters);
      copied = entryEnd;
    }
    if (!cursor.Skip(kNulPair)) return Abort(messages, "Abbruch(7): Messstellentabelle fehlerhaft!");
  } while (!cursor.AtNul());
  linked.append(points.substr(copied));
  return linked;
}

}  // namespace ox
