// Any bytes as a loader hex file, bare and with the sum of every line put right: taken as a whole or refused,
// never a step outside the image.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "programming/loader_hex.h"

namespace {

using ox::Bytes;

constexpr std::size_t kImageSize = 0x8100;
constexpr std::size_t kLongestRecord = 64;  // bytes
constexpr char kDigits[] = "0123456789ABCDEF";

void Require(bool holds) {
  if (!holds) std::abort();
}

void AddByte(Bytes& line, unsigned value) {
  line += kDigits[value >> 4U & 0xFU];
  line += kDigits[value & 0xFU];
}

/// Lines whose digits and sums are sound, so that addresses and lengths are tried as well.
Bytes SoundLines(ox::BytesView input) {
  Bytes text;
  while (!input.empty()) {
    const std::size_t length = std::min<std::size_t>(ox::ByteValue(input[0]) % kLongestRecord, input.size());
    Bytes line = ":";
    unsigned sum = 0;
    for (const char byte : input.substr(0, length)) {
      AddByte(line, ox::ByteValue(byte));
      sum += ox::ByteValue(byte);
    }
    AddByte(line, 0U - sum);
    text += line + "\r\n";
    input.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return text + ":00000001FF\r\n";
}

void Read(const Bytes& text) {
  Bytes image(kImageSize, '\x55');
  const bool good = ox::ReadLoaderHex(text, image);
  Require(image.size() == kImageSize);
  if (good) Require(text.find(":000000") != Bytes::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ox::BytesView input(reinterpret_cast<const char*>(data), size);
  Read(Bytes(input));
  Read(SoundLines(input));
  return 0;
}
