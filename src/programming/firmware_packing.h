// From a loader hex file to the generation III program file that the update loads.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/random_numbers.h"

namespace ox {

/// No loader file is larger: the whole memory, one byte a line, stays below a megabyte.
constexpr std::size_t kMaxLoaderFile = std::size_t{4} * 1024 * 1024;  // bytes

/// The content of the ".pr3" file for a loader hex text; nothing when the text is faulty. Bytes that it does
/// not tell are filled with random ones, 0 to 250.
std::optional<Bytes> PackFirmware(BytesView loaderHex, RandomNumbers& random);

/// Packs the loader hex file `source` into the program file `target`, which it replaces. Nothing when that
/// went well; else the message (UTF-8) that says why not, with the target as it was. Paths are UTF-8.
std::optional<std::string> PackFirmwareFile(const std::string& source, const std::string& target,
                                            Files& files, RandomNumbers& random);

}  // namespace ox
