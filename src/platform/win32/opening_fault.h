// Why a device cannot be opened, and what helps.
#pragma once

#include "platform/serial_port.h"

namespace ox {

/// What the system's error code means for a port, in German: not there, taken, no serial line. Others come
/// in the system's own words.
PortError OpeningFault(unsigned long error);

}  // namespace ox
