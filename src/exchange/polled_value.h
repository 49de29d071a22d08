// What a record of a reply says.
#pragma once

#include <string_view>

#include "exchange/name_index.h"
#include "platform/bytes.h"

namespace ox {

/// Each without blanks around it, empty where the record does not tell it; Windows-1252. They point into the
/// record, the names and the office that was asked for.
struct PolledValue {
  BytesView office;     // code of three digits
  BytesView point;      // number of eight digits
  BytesView parameter;  // number of four digits
  BytesView mark;       // quality mark, one character
  BytesView value;      // of a record without a measuring point, such as a time, all of it
  BytesView name;       // of the measuring point
};

/// Takes a record (reply_display.h) apart. The office comes from the table of the names; for a point that it
/// does not know, `office` stands, the code that was asked for.
PolledValue ReadRecord(BytesView record, const NameIndex& names, BytesView office);

/// Digits with at most one decimal point among them, behind a sign or none.
bool IsNumber(std::string_view text);

}  // namespace ox
