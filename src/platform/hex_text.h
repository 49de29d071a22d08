// Words as people read them in hexadecimal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ox {

/// The lowest 16 bits of a number as four digits: "3F2A".
inline std::string HexWord(std::size_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr unsigned kDigitBits = 4;
  std::string text(sizeof "FFFF" - 1, '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= kDigitBits) {
    *digit = kDigits[number % kDigits.size()];
  }
  return text;
}

}  // namespace ox
