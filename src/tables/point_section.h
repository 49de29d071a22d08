// The measuring-point section of the image for devices of generation III.
//
// Layout: word with the number n of points, NUL, NUL; n entries of 18 bytes; four bytes 255; n parameter
// blocks; four bytes 255. Numbers are packed as told in encodings.h.
//   Entry: number (4), office code (2), first difference (2), second difference (2), name (5), 255, and a
//   word: the distance in bytes from this word's first byte to the point's parameter block. Parameter block:
//   the parameter numbers (2 each), 255, 255.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// The measuring points that the section can hold.
constexpr std::size_t kMaxPoints = 1000;

/// Bytes of an entry, and what stands behind the entries and behind the parameter blocks.
constexpr std::size_t kPackedEntrySize = 18;
constexpr BytesView kAreaEnd{"\xFF\xFF\xFF\xFF", 4};

enum class PointSectionStatus {
  kBuilt,
  kWithoutEntries,  ///< no point in the table, or one that cannot be written, such as one without parameters
  kTooManyPoints,   ///< more than kMaxPoints
};

struct PointSection {
  PointSectionStatus status;
  /// kBuilt: the section. kWithoutEntries: its head and its eight bytes 255, of no use to a device.
  /// kTooManyPoints: empty.
  Bytes bytes;
};

/// Builds the section out of a linked measuring-point table.
PointSection BuildMeasuringPointImage(BytesView linked);

}  // namespace ox
