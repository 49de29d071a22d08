// Header and checksum of a loader frame.
#include "programming/block_frame.h"

namespace ox {
namespace {

constexpr BytesView kFixedBytes{"\x13\x58\x00", 3};
constexpr unsigned kByteBits = 8;

char HeaderChecksum(BytesView header) {
  unsigned checksum = 0;
  for (const char byte : header) checksum -= ByteValue(byte);
  return ByteOf(checksum);
}

}  // namespace

Bytes BuildBlockFrame(char letter, std::size_t address, BytesView data) {
  const auto location = static_cast<unsigned>(address);
  Bytes frame(1, letter);
  frame += kFixedBytes;
  frame += ByteOf(location >> kByteBits);
  frame += ByteOf(location);
  frame += ByteOf(static_cast<unsigned>(data.size()));
  frame += HeaderChecksum(frame);
  return frame.append(data);
}

}  // namespace ox
