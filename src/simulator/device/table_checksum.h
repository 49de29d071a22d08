// The checksum at the end of a table image, as the device verifies it.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox::sim {

/// A table image in bytes; its last two are the checksum, low byte first.
inline constexpr std::size_t kTableImageSize = 16384;
inline constexpr std::size_t kTableChecksumAt = kTableImageSize - 2;

/// The checksum that belongs to an image of kTableImageSize bytes: a 16-bit sum, started at 2, over all
/// before it.
unsigned TableChecksum(BytesView image);

/// Whether the image has its size and ends with the right checksum.
bool TableChecksumRight(BytesView image);

}  // namespace ox::sim
