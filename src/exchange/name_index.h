// The names of measuring points and the codes of their offices, found by the points' numbers.
#pragma once

#include <functional>
#include <map>

#include "platform/bytes.h"

namespace ox {

/// Numbers and names out of a packed measuring-point table. Keeps copies, so the table need not live as long.
class NameIndex {
 public:
  NameIndex() = default;

  /// `tableImage` as ParseMesTable packs it (see packed_tables.h), or any bytes. It is searched for the bytes
  /// that stand before an entry, with eight digits behind them. An office whose name begins with eight digits
  /// looks the same and counts as an entry.
  explicit NameIndex(BytesView tableImage);

  /// The name of the first point with this number, five characters of Windows-1252; empty when there is none.
  BytesView Find(BytesView number) const;

  /// The office code of that point, three digits; empty when there is no such point or the table tells none.
  BytesView OfficeOf(BytesView number) const;

 private:
  struct Point {
    Bytes name;
    Bytes office;
  };

  std::map<Bytes, Point, std::less<>> points_;
};

}  // namespace ox
