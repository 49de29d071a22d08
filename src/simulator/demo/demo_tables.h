// The tables that a simulated device is given to start with.
#pragma once

#include <string>

#include "platform/bytes.h"

namespace ox::sim {

/// The table image of netz.mes, netz.par and netz.zuo in a folder; `older` chooses which of the two. Empty
/// when a file is missing or faulty; what is wrong with it goes to the standard error stream.
Bytes ReadDemoImage(const std::string& folder, bool older);

}  // namespace ox::sim
