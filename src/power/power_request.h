// The status request, and the battery charge that it can have the device simulate.
#pragma once

#include <string_view>

#include "platform/bytes.h"

namespace ox {

/// The charge that stands for "none".
constexpr int kNoPreset = -1;

/// Whether the device can be sent this charge, in percent.
constexpr bool IsPreset(int charge) {
  return charge >= 0 && charge <= 100;
}

/// The charge in a text that a user typed, rounded to a whole number, halves to the even one; 0 when the text
/// does not begin with a number. What follows the number is ignored; "." is its decimal point. A number
/// beyond 16 bits becomes the farthest number within them.
int ReadPreset(std::string_view text);

/// The request with the charge to simulate, in percent, or with the mark for "none" when it is none.
Bytes BuildStatusRequest(int charge);

}  // namespace ox
