// Decimal digits of a fixed least number.
#pragma once

#include <cstddef>
#include <string>

namespace ox {

/// The decimal digits of `value`, without its sign, with zeros in front up to `leastDigits`.
std::string DecimalText(int value, std::size_t leastDigits);

}  // namespace ox
