// What may stand in the values of a table: the device's characters and strings of digits.
#pragma once

#include "platform/bytes.h"
#include "tables/table_messages.h"
#include "tables/table_text.h"

namespace ox {

/// A text value, which is a part of the table text, in the device's characters (device_characters.h). One
/// that the device cannot show is reported for `line`, and the result is empty.
Bytes CheckTableText(const TableText& tableText, BytesView value, int line, TableMessages& messages);

/// The value unchanged when it consists of digits only, else the empty string (also for an empty value).
BytesView DigitsOnly(BytesView value);

/// True for four digits from "0000" to "1023".
bool IsParameterNumber(BytesView value);

}  // namespace ox
