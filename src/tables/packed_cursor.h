// Steps through a packed table without ever leaving it, however damaged it is.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/bytes.h"
#include "tables/packed_tables.h"

namespace ox {

/// A reading position in a packed table; the table must outlive the cursor.
class PackedCursor {
 public:
  explicit PackedCursor(BytesView table) : table_(table) {}

  /// The characters up to the next `end`, which is stepped over; nothing, and no step, when there is none.
  std::optional<BytesView> TakeField(char end = kNul);

  /// The next `length` characters, or those that are left.
  BytesView Take(std::size_t length);

  /// Steps behind the next two NULs in a row; false, and no step, when there are none.
  bool SkipToNulPair();

  /// Steps over `expected`; false, and no step, when something else comes next.
  bool Skip(BytesView expected);

  /// True when a NUL comes next; false at the end of the table.
  bool AtNul() const { return position_ < table_.size() && table_[position_] == kNul; }

  /// Characters already stepped over.
  std::size_t Position() const { return position_; }

 private:
  BytesView table_;
  std::size_t position_ = 0;
};

}  // namespace ox
