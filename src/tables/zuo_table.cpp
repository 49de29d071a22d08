// Grammar and checks of the assignment table.
#include "tables/zuo_table.h"

#include <string_view>
#include <utility>

#include "tables/packed_tables.h"
#include "tables/table_characters.h"
#include "tables/table_reader.h"

namespace ox {
namespace {

/// Deliberately higher than the bound that the messages name.
constexpr BytesView kHighestPointNumber = "16777216";

constexpr std::string_view kBadParameterList =
    ", Parameterliste muss aus Blöcken mit 4 Ziffern (0000...1023) bestehen, die durch Komma getrennt sein "
    "müssen!";

constexpr char kListSeparator = ',';

/// Appends the numbers of a list without their commas; false when the list is not made as it must be.
bool AppendParameterNumbers(BytesView list, Bytes& packed) {
  for (;;) {
    const BytesView number = list.substr(0, kParameterNumberLength);
    if (!IsParameterNumber(number)) return false;
    packed.append(number);
    list.remove_prefix(number.size());
    if (list.empty()) return true;
    if (list.front() != kListSeparator) return false;
    list.remove_prefix(1);
  }
}

/// The mark /N/ has been read.
bool ReadAssignment(TableReader& reader, Bytes& packed) {
  const BytesView number = reader.ReadValue("Messstellennummer");
  if (number.empty()) return false;
  if (number.size() != kPointNumberLength) {
    return reader.Fail(", Messstellennummer muss aus 8 Ziffern mit bestehen (00000000...15728639!");
  }
  // Strings of digits of one length are in the order of their numbers.
  if (DigitsOnly(number).empty() || number > kHighestPointNumber) {
    return reader.Fail(", Parameternummer muss aus 8 Ziffern mit bestehen (00000000...15728639!");
  }
  packed.append(number);

  if (!reader.ReadMark('P')) return false;
  const BytesView list = reader.ReadValue("Parameterliste");
  if (list.empty()) return false;
  if (!AppendParameterNumbers(list, packed)) return reader.Fail(kBadParameterList);
  packed.push_back(kNul);
  return true;
}

}  // namespace

Bytes ParseZuoTable(const TableText& tableText, TableMessages& messages) {
  TableReader reader(tableText, messages);
  Bytes packed;
  for (;;) {
    const bool expected = reader.ReadMark('N', 'E');
    if (expected && reader.Mark() == 'E') return reader.Result(std::move(packed.append(1, kNul)));
    if ((!expected || !ReadAssignment(reader, packed)) && !reader.GoOn("NE")) return {};
  }
}

}  // namespace ox
