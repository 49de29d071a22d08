// The frame in which a request goes to the device's loader; its layout stands in docs/device-formats.md.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

/// The most data that a frame carries, in bytes.
constexpr std::size_t kBlockSize = 256;

/// Of the header that goes before the data, in bytes.
constexpr std::size_t kFrameHeaderSize = 8;

/// Eight header bytes, then the data: request letter, three fixed bytes, address (0 to 65535, high byte
/// first, unlike the words within the images), number of data bytes (a full block counts as 0), and the byte
/// that makes the header's sum 0 modulo 256. The data have no checksum: the device verifies the whole area
/// when it is written.
Bytes BuildBlockFrame(char letter, std::size_t address, BytesView data);

}  // namespace ox
