// Reading bytes one after another with every step checked, for data that may be anything.
#pragma once

#include <cstddef>
#include <string>

#include "platform/bytes.h"

namespace ox::sim {

/// A place in bytes that it does not own. The first step that finds something else than it should makes the
/// cursor fail: from then on it stands still, and every step returns an empty text, 0 or false.
class ByteCursor {
 public:
  explicit ByteCursor(BytesView bytes) : bytes_(bytes) {}

  bool Failed() const { return failed_; }
  std::size_t Position() const { return position_; }

  /// Makes the cursor fail unless the condition holds.
  void Require(bool condition);

  /// Steps over these bytes when they are next; the cursor does not fail when they are not.
  bool Skip(BytesView expected);
  /// Steps over these bytes, which must be next.
  void Expect(BytesView expected) { Require(Skip(expected)); }
  /// Steps to the end over bytes that must all have this value.
  void ExpectOnly(char filler);

  /// The next count bytes, as they are.
  Bytes Take(std::size_t count);
  /// The bytes before the next end character, shortest to longest of them, and steps over the end character.
  Bytes TakeUntil(char end, std::size_t shortest, std::size_t longest);
  /// The next count bytes, which must be digits.
  std::string TakeDigits(std::size_t count);
  /// Packed decimal of so many bytes, two digits each, the lowest pair first: its digits, the highest first.
  std::string TakePackedDecimal(std::size_t count);
  /// A 16-bit word, low byte first.
  unsigned TakeWord();

 private:
  BytesView bytes_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

}  // namespace ox::sim
