// Verifying a table image.
#include "simulator/device/table_checksum.h"

namespace ox::sim {
namespace {

constexpr unsigned kSumStart = 2;
constexpr unsigned kWordMask = 0xFFFF;
constexpr unsigned kByteBits = 8;

}  // namespace

unsigned TableChecksum(BytesView image) {
  unsigned sum = kSumStart;
  for (const char byte : image.substr(0, kTableChecksumAt)) sum += ByteValue(byte);
  return sum & kWordMask;
}

bool TableChecksumRight(BytesView image) {
  if (image.size() != kTableImageSize) return false;
  const unsigned stored =
      ByteValue(image[kTableChecksumAt + 1]) << kByteBits | ByteValue(image[kTableChecksumAt]);
  return stored == TableChecksum(image);
}

}  // namespace ox::sim
