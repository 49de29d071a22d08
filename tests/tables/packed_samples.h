// Packed tables written by hand, for the tests of linking and images.
#pragma once

#include "tables/recorded_messages.h"

namespace ox {

/// An entry that carries these parameter digits; none as long as the table is not linked.
inline Bytes PointEntry(const Bytes& number, const Bytes& parameters = "") {
  return number + " 0012-0012Pegel" + Bytes(1, '\0') + parameters + "\xFF";
}

/// A measuring-point table of one office with these entries.
inline Bytes OfficeTable(const Bytes& entries) {
  return Packed(
             "Stand\0\0Amt\0"
             "123\0") +
         entries + Packed("\0\0\0");
}

/// The 8-digit number of the n-th of many points.
inline Bytes PointNumber(unsigned n) {
  return std::to_string(10000000 + n);
}

}  // namespace ox
