// Polled values as CSV, for a German spreadsheet.
//
// Fields are separated by ";", lines end with CR LF, quotes as in RFC 4180; UTF-8. A number has a comma for
// its decimal point. A field that a spreadsheet would take for a formula has a "'" in front.
#pragma once

#include <string>
#include <string_view>

#include "exchange/name_index.h"
#include "platform/bytes.h"
#include "platform/clock.h"

namespace ox {

/// The line with the names of the columns.
std::string CsvHeading();

/// A line for each record of a reply (reply_display.h): office code, number and parameter of the measuring
/// point, quality mark, value, name of the point, time of the poll ("2026-11-22T14:05:58"). The office comes
/// from the table of the names; for a point that it does not know, `office` stands, the code that was asked
/// for. A record without a measuring point, such as a time, stands whole in the column of the values.
std::string CsvLines(BytesView reply, const NameIndex& names, BytesView office, const CivilTime& polled);

}  // namespace ox
