// Grammar and checks of the parameter list.
#include "tables/par_table.h"

#include <utility>

#include "tables/packed_tables.h"
#include "tables/table_characters.h"
#include "tables/table_reader.h"

namespace ox {
namespace {

constexpr char kSeparator = ' ';

/// The mark /P/ has been read.
bool ReadParameter(TableReader& reader, Bytes& packed) {
  const BytesView number = reader.ReadValue("Parameternummer");
  if (number.empty()) return false;
  if (!IsParameterNumber(number)) {
    return reader.Fail(", Parameternummer muss aus 4 Ziffern bestehen (0000...1023!");
  }

  if (!reader.ReadMark('T')) return false;
  Bytes designation = reader.ReadText("Parameterbezeichnung", kDesignationLength,
                                      ", Parameterbezeichnung muss aus genau 9 Zeichen bestehen!");
  if (designation.empty()) return false;
  designation.resize(kDesignationLength, kPadding);

  if (!reader.ReadMark('M')) return false;
  const Bytes unit =
      reader.ReadText("Maßeinheit", kUnitLength, ", Maßeinheit muss aus genau 3 Zeichen bestehen!");
  if (unit.empty()) return false;

  packed.append(number).append(1, kSeparator).append(designation).append(1, kSeparator);
  packed.append(unit).append(1, kNul);
  return true;
}

}  // namespace

Bytes ParseParTable(const TableText& tableText, TableMessages& messages) {
  TableReader reader(tableText, messages);
  Bytes packed;
  for (;;) {
    const bool expected = reader.ReadMark('P', 'E');
    if (expected && reader.Mark() == 'E') return reader.Result(std::move(packed.append(kNulPair)));
    if ((!expected || !ReadParameter(reader, packed)) && !reader.GoOn("PE")) return {};
  }
}

}  // namespace ox
