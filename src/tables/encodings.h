// How numbers are written in the device's tables.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// A number modulo 65536 as two bytes, low byte first.
Bytes PackWord(std::size_t number);

/// A string of digits as packed decimal, lowest pair first: "1023" gives 23 hex, 10 hex. An odd number of
/// digits gets a zero in front. Empty when there is anything but digits.
Bytes PackBcd(BytesView digits);

/// A difference of five characters, "-" or a blank and four digits, as a word in two's complement.
/// Empty when it has another form.
Bytes PackSignedDifference(BytesView difference);

}  // namespace ox
