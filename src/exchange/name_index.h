// The names of measuring points, found by their numbers.
#pragma once

#include <functional>
#include <map>

#include "platform/bytes.h"

namespace ox {

/// Numbers and names out of a packed measuring-point table. Keeps copies; the table may go.
class NameIndex {
 public:
  NameIndex() = default;

  /// `tableImage` as ParseMesTable packs it (see packed_tables.h), or any bytes. It is searched for the bytes
  /// that stand before an entry, with eight digits behind them; heads are not told apart, so that an office
  /// whose name begins with eight digits passes for an entry.
  explicit NameIndex(BytesView tableImage);

  /// The name of the first point with this number, five characters of Windows-1252; empty when there is none.
  BytesView Find(BytesView number) const;

 private:
  std::map<Bytes, Bytes, std::less<>> names_;
};

}  // namespace ox
