// How the records of a reply are shown: three to a line, with the names of their measuring points.
//
// A reply is one framing character, then records, each ended by CR. A record begins with the measuring-point
// number (8) and ":" where it belongs to a point; the rest (blank, parameter, flag, value) is shown as it
// came.
#pragma once

#include <cstddef>
#include <vector>

#include "exchange/name_index.h"
#include "platform/bytes.h"

namespace ox {

/// No record is shown with more characters.
inline constexpr std::size_t kMaxRecordLength = 25;
/// A shorter record ends the display, such as the "E" behind several records.
inline constexpr std::size_t kMinRecordLength = 3;
/// Records in a line of the display.
inline constexpr std::size_t kRecordsPerLine = 3;

/// The records of a reply that are shown, uncut, each without its CR. They point into the reply.
std::vector<BytesView> ShownRecords(BytesView reply);

/// Whether a line of a reply holds a record.
bool IsRecord(BytesView line);

/// One of them as it is displayed, Windows-1252: cut, with the name of its measuring point.
Bytes FormatRecord(BytesView record, const NameIndex& names);

/// The display of a reply, Windows-1252, lines ended by CR LF. What is left without a CR at the end is not
/// shown.
Bytes FormatValues(BytesView reply, const NameIndex& names);

}  // namespace ox
