// Words and packed decimals.
#include "tables/encodings.h"

#include "tables/packed_tables.h"
#include "tables/table_characters.h"

namespace ox {
namespace {

constexpr unsigned DigitValue(char digit) {
  return static_cast<unsigned>(digit - '0');
}

}  // namespace

Bytes PackWord(std::size_t number) {
  return {ByteOf(static_cast<unsigned>(number & 0xFFU)), ByteOf(static_cast<unsigned>(number >> 8U & 0xFFU))};
}

Bytes PackBcd(BytesView digits) {
  Bytes packed;
  if (DigitsOnly(digits).empty()) return packed;
  while (!digits.empty()) {
    const unsigned ones = DigitValue(digits.back());
    digits.remove_suffix(1);
    const unsigned tens = digits.empty() ? 0 : DigitValue(digits.back());
    digits.remove_suffix(digits.empty() ? 0 : 1);
    packed.push_back(ByteOf(tens << 4U | ones));
  }
  return packed;
}

Bytes PackSignedDifference(BytesView difference) {
  if (difference.size() != kDifferenceLength) return {};
  const bool negative = difference.front() == '-';
  const BytesView digits = DigitsOnly(difference.substr(1));
  if (digits.empty() || (!negative && difference.front() != ' ')) return {};
  std::size_t number = 0;
  for (const char digit : digits) number = number * 10 + DigitValue(digit);
  return PackWord(negative ? std::size_t{0} - number : number);
}

}  // namespace ox
