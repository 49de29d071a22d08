// Grammar and checks of the measuring-point table.
#include "tables/mes_table.h"

#include <utility>

#include "tables/packed_tables.h"
#include "tables/table_characters.h"
#include "tables/table_reader.h"

namespace ox {
namespace {

bool ReadVersion(TableReader& reader, Bytes& packed) {
  if (!reader.ReadMark('S')) return false;
  const Bytes version =
      reader.ReadText("Tabellenstand", kVersionMaxLength, ", Tabellenstand zu lang (max. 16 Zeichen)!");
  packed.append(version).append(kNulPair);
  return !version.empty();
}

/// The mark /A/ has been read.
bool ReadOfficeHead(TableReader& reader, Bytes& packed) {
  const Bytes name = reader.ReadText("Amtsbezeichnung", kOfficeNameMaxLength,
                                     ", Amtsbezeichnung zu lang (max. 14 Zeichen)!");
  if (name.empty() || !reader.ReadMark('Z')) return false;

  const BytesView value = reader.ReadValue("Amtskennzeichen");
  if (value.empty()) return false;
  // The message speaks of digits, but only the length is checked: older devices take any three characters.
  // Other characters than digits are refused later, when the image of generation III is built.
  if (value.size() != kOfficeCodeLength)
    return reader.Fail(", Amtskennzeichen muss aus drei Ziffern bestehen!");
  const Bytes code = reader.Translate(value);
  packed.append(name).append(1, kNul).append(code).append(1, kNul);
  return !code.empty();
}

bool IsDifference(BytesView value) {
  return value.size() == kDifferenceLength && (value[0] == '-' || value[0] == ' ') &&
         !DigitsOnly(value.substr(1)).empty();
}

/// Both differences go by the same name in the reports.
bool ReadDifference(TableReader& reader, char mark, Bytes& packed) {
  if (!reader.ReadMark(mark)) return false;
  const BytesView difference = reader.ReadValue("Differenz");
  if (difference.empty()) return false;
  if (!IsDifference(difference)) {
    return reader.Fail(", Differenz muss aus 4 Ziffern mit - oder Blank als Vorzeichen bestehen!");
  }
  packed.append(difference);
  return true;
}

/// The mark /N/ has been read.
bool ReadPoint(TableReader& reader, Bytes& packed) {
  const BytesView number = reader.ReadValue("Messstellennummer");
  if (number.empty()) return false;
  if (number.size() != kPointNumberLength || DigitsOnly(number).empty()) {
    return reader.Fail(", Messstellennummer muss aus 8 Ziffern bestehen!");
  }
  packed.append(number);

  if (!ReadDifference(reader, 'D', packed) || !ReadDifference(reader, 'M', packed)) return false;

  if (!reader.ReadMark('T')) return false;
  Bytes name = reader.ReadText("Messstellenbezeichnung", kPointNameLength,
                               ", Messstellenbezeichnung zu lang (max. 5 Zeichen)!");
  if (name.empty()) return false;
  name.resize(kPointNameLength, kPadding);
  packed.append(name).append({kNul, kEntryEnd});
  return true;
}

/// The next mark with all that belongs to it; `inOffice` tells where it stands, and where the next one will.
bool ReadEntry(TableReader& reader, bool& inOffice, Bytes& packed) {
  if (inOffice) {
    if (!reader.ReadMark('N', 'B')) return false;
    if (reader.Mark() == 'N') return ReadPoint(reader, packed);
    inOffice = false;
    packed.append(kNulPair);
    return true;
  }
  if (!reader.ReadMark('A', 'E')) return false;
  if (reader.Mark() == 'E') return true;
  inOffice = true;
  return ReadOfficeHead(reader, packed);
}

}  // namespace

Bytes ParseMesTable(const TableText& tableText, TableMessages& messages) {
  TableReader reader(tableText, messages);
  Bytes packed;
  bool inOffice = false;
  bool sound = ReadVersion(reader, packed);
  while (!sound || reader.Mark() != 'E') {
    if (!sound) {
      if (!reader.GoOn("ANBE")) return {};
      // What comes next tells where it stands.
      inOffice = reader.Mark() == 'N' || reader.Mark() == 'B';
    }
    sound = ReadEntry(reader, inOffice, packed);
  }
  packed.push_back(kNul);
  return reader.Result(std::move(packed));
}

}  // namespace ox
