// The date and time that a simulated device tells.
#pragma once

#include <cstdint>

#include "platform/bytes.h"

namespace ox::sim {

/// "22.11.26 21:45:10", 17 characters, of a count of seconds since the start of 1970 by the same clock.
Bytes FormatDateAndTime(std::int64_t secondsSince1970);

}  // namespace ox::sim
