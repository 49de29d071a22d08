// Loader hex files (".LDR"): device memory as text.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// Writes what a loader hex file says into an image, whose other bytes stay as they are. False when the file
/// is faulty; the image is of no use then.
///
/// The text is a row of fields (see FieldReader) up to the end record, which begins with ":000000". Every
/// field is ":" and pairs of the digits 0 to 9 and A to F: a count that nobody uses, the address (high byte
/// first), a type that nobody uses, the data, and a check byte that brings the sum to 0 modulo 256. Records
/// whose address is 0x8000 or above are left out; data that run past the image's end make the file faulty,
/// and so does a missing end record.
bool ReadLoaderHex(BytesView text, Bytes& image);

/// The line, from 1, of what makes a loader hex file faulty; 0 when nothing does. Where the end record is
/// missing, the last one.
int FaultyHexLine(BytesView text);

}  // namespace ox
