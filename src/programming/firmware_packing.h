// From a loader hex file to the generation III program file that the update loads.
#pragma once

#include <optional>

#include "platform/bytes.h"
#include "platform/random_numbers.h"

namespace ox {

/// The content of the ".pr3" file for a loader hex text; nothing when the text is faulty. Bytes that it does
/// not tell are filled with random ones, 0 to 250.
std::optional<Bytes> PackFirmware(BytesView loaderHex, RandomNumbers& random);

}  // namespace ox
