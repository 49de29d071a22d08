// The log of the power monitor as curves that a browser shows.
#pragma once

#include <string>

#include "platform/bytes.h"

namespace ox::tool {

/// An SVG picture, UTF-8, of charge and capacity, voltages, and temperature over the time. However long the
/// log is, the picture stays below some hundred kilobytes: of what falls on one column of it, each curve
/// keeps the first, lowest, highest and last value. The log has an entry at least.
std::string LogCurves(BytesView log);

}  // namespace ox::tool
