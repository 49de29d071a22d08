// Any bytes as a table image with the right checksum, through the device's readers of both layouts.
#include <cstdint>

#include "simulator/image_reader.h"
#include "simulator/table_checksum.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ox::Bytes image(reinterpret_cast<const char*>(data), size);
  image.resize(ox::sim::kTableImageSize, '\xFF');
  const unsigned checksum = ox::sim::TableChecksum(image);
  image[ox::sim::kTableChecksumAt] = ox::ByteOf(checksum);
  image[ox::sim::kTableChecksumAt + 1] = ox::ByteOf(checksum >> 8U);
  const auto older = ox::sim::ReadOlderImage(image);
  const auto newer = ox::sim::ReadGeneration3Image(image);
  if (older && newer) __builtin_trap();  // an image has one layout
  return 0;
}
