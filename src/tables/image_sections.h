// The four sections of the image for devices of generation III.
//
// Version section: at most 12 characters, NUL.
// Parameter, office and measuring-point section: word with the number of records, NUL, NUL, the records, and
//   a closing row of bytes 255. Numbers are packed as told in encodings.h.
//   Parameter record (14 bytes): number (2), designation (9), unit (3).
//   Office record (16 bytes): code (2), name (14, padded with blanks).
// The measuring-point section is described in point_section.h.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// Stands behind the records of every section but the version.
constexpr BytesView kRecordsEnd{"\xFF\xFF", 2};

/// Characters of a version that the device shows.
constexpr std::size_t kVersionShown = 12;

/// What a section with a number of records begins with.
Bytes SectionHead(std::size_t records);

/// The version of a measuring-point table, linked or not; a longer one is cut to the 12 characters that the
/// device shows. Empty when there is none.
Bytes BuildVersionField(BytesView points);

/// The parameter section of a packed parameter list. Empty when an entry is not as long as it must be, which
/// a unit of less than three characters brings about.
Bytes BuildParameterImage(BytesView parameters);

/// The office section of a linked measuring-point table. Empty when an office code is not made of three
/// digits.
Bytes BuildOfficeImage(BytesView linked);

}  // namespace ox
