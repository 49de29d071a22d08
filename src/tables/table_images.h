// The two table images, one for each kind of device, as they are written into its loader;
// docs/device-formats.md shows each with an example.
//
// Both are 16384 bytes long: the body, filler bytes 255 up to offset 16381, and at 16382 the checksum, a
// word.
//
// Older body: two words of device addresses with two bytes 00 behind each, of the linked measuring-point
// table, which follows at offset 8, and of the packed parameter list behind it. Device memory begins at
// 8000 hex.
//
// Body of generation III: four words with two bytes 00 behind each, the distance from the word to the first
// byte of section 1 (version), 2 (parameters), 3 (offices) and 4 (measuring points); then the sections, each
// followed by 1 to 4 bytes 255 that make its length a multiple of four.
#pragma once

#include <cstddef>

#include "platform/bytes.h"

namespace ox {

constexpr std::size_t kImageSize = 16384;
constexpr std::size_t kChecksumOffset = 16382;
constexpr std::size_t kMaxImageBody = 16380;

constexpr std::size_t kSlotSize = 4;           // a word of an image's head, 00 and 00
constexpr std::size_t kDeviceMemory = 0x8000;  // device address of an image's first byte
/// The first word of an image tells which one it is: where its first part begins.
constexpr std::size_t kOlderPointsAddress = kDeviceMemory + 2 * kSlotSize;
constexpr std::size_t kGeneration3HeadSize = 4 * kSlotSize;
/// The length of a section of generation III, with its filler bytes, is a multiple of this.
constexpr std::size_t kAlignment = 4;

enum class ImageStatus {
  kBuilt,
  kUnusable,  ///< a section could not be built, or the measuring points came out without entries
  kOverflow,  ///< the body is longer than kMaxImageBody, or there are more measuring points than fit
};

struct TableImage {
  ImageStatus status;
  Bytes bytes;  ///< kImageSize bytes when built, else empty
  /// Of the body, in bytes, also when it is too long; 0 when there is none, as with too many measuring
  /// points.
  std::size_t bodySize = 0;
};

struct TableImages {
  TableImage generation3;
  TableImage older;  ///< never kUnusable: what generation III refuses is legal here
};

/// Builds both images out of the linked measuring-point table and the packed parameter list. An image
/// that is too long counts as an overflow, whether its sections are usable or not. The caller reports an
/// overflow of generation III first, then of the older image, and an unusable image only to a device that
/// asks for it.
TableImages BuildTableImages(BytesView linked, BytesView parameters);

/// The checksum of an image without it: 2 and the sum of all bytes, modulo 65536.
unsigned ImageChecksum(BytesView image);

}  // namespace ox
