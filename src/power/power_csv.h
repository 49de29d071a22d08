// The power status as CSV, in the manner of exchange/values_csv.h.
#pragma once

#include <string>

#include "platform/clock.h"
#include "power/power_status.h"

namespace ox {

/// The line with the names of the columns.
std::string PowerCsvHeading();

/// Time ("2026-11-22T14:05:58"), charge in percent, the voltages of battery and mains adapter in volts,
/// capacity in percent, degrees Celsius, and the charger's state; the numbers without their units, with a
/// comma for the decimal point.
std::string PowerCsvLine(const CivilTime& time, const PowerStatusTexts& texts);

}  // namespace ox
