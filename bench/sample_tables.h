// Table files of any size.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox::bench {

/// Contents of the three table files of a network, all of which fit together.
struct SampleTables {
  Bytes points;
  Bytes parameters;
  Bytes assignments;
};

/// So many measuring points, a hundred to an office, with so many parameters each.
SampleTables MakeSampleTables(std::size_t points, std::size_t parametersEach);

/// The 8-digit number of point `index`, from 0 on.
Bytes SamplePointNumber(std::size_t index);

}  // namespace ox::bench
