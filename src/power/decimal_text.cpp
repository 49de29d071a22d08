// Decimal digits with leading zeros.
#include "power/decimal_text.h"

#include <cstdlib>

namespace ox {

std::string DecimalText(int value, std::size_t leastDigits) {
  std::string digits = std::to_string(std::abs(value));
  if (digits.size() < leastDigits) digits.insert(0, leastDigits - digits.size(), '0');
  return digits;
}

}  // namespace ox
