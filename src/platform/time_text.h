// Times as people and files write them.
#pragma once

#include <string>

#include "platform/clock.h"

namespace ox {

/// "2026-11-22T14:05:58"
std::string IsoTime(const CivilTime& time);

/// "22.11.2026 14:05:58"
std::string GermanTime(const CivilTime& time);

}  // namespace ox
