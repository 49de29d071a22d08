// The checked steps through bytes.
#include "simulator/device/byte_cursor.h"

#include <algorithm>

namespace ox::sim {
namespace {

constexpr unsigned kByteBits = 8;
constexpr unsigned kDigitBits = 4;
constexpr unsigned kDigitMask = 0x0F;
constexpr unsigned kHighestDigit = 9;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

}  // namespace

void ByteCursor::Require(bool condition) {
  if (!condition) failed_ = true;
}

bool ByteCursor::Skip(BytesView expected) {
  if (failed_ || bytes_.substr(position_, expected.size()) != expected) return false;
  position_ += expected.size();
  return true;
}

void ByteCursor::ExpectOnly(char filler) {
  if (failed_) return;
  Require(bytes_.find_first_not_of(filler, position_) == BytesView::npos);
  if (!failed_) position_ = bytes_.size();
}

Bytes ByteCursor::Take(std::size_t count) {
  Require(count <= bytes_.size() - position_);
  if (failed_) return {};
  position_ += count;
  return Bytes(bytes_.substr(position_ - count, count));
}

Bytes ByteCursor::TakeUntil(char end, std::size_t shortest, std::size_t longest) {
  const std::size_t endAt = bytes_.find(end, position_);
  Require(endAt != BytesView::npos && endAt - position_ >= shortest && endAt - position_ <= longest);
  if (failed_) return {};
  Bytes taken(bytes_.substr(position_, endAt - position_));
  position_ = endAt + 1;
  return taken;
}

std::string ByteCursor::TakeDigits(std::size_t count) {
  Bytes digits = Take(count);
  Require(std::all_of(digits.begin(), digits.end(), IsDigit));
  return failed_ ? std::string() : digits;
}

std::string ByteCursor::TakePackedDecimal(std::size_t count) {
  const Bytes packed = Take(count);
  std::string digits;
  for (auto byte = packed.rbegin(); byte != packed.rend(); ++byte) {
    for (const unsigned digit : {ByteValue(*byte) >> kDigitBits, ByteValue(*byte) & kDigitMask}) {
      Require(digit <= kHighestDigit);
      digits += ByteOf('0' + digit);
    }
  }
  return failed_ ? std::string() : digits;
}

unsigned ByteCursor::TakeWord() {
  const Bytes word = Take(2);
  return failed_ ? 0 : ByteValue(word[1]) << kByteBits | ByteValue(word[0]);
}

}  // namespace ox::sim
