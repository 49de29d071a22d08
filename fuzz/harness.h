// What all harnesses share. Each defines Fuzz, which checks what must hold.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "platform/bytes.h"

namespace ox {

/// Tries one input in the way that its first byte, taken off it, chooses.
void Fuzz(unsigned choice, BytesView input);

/// Ends the run as a find.
inline void Require(bool holds) {
  if (!holds) std::abort();
}

/// What is sound after a row of edits: where (two bytes), how many characters go and whether one comes, and
/// which. So every input stays close to it.
constexpr std::size_t kEditSize = 4;
inline Bytes Damaged(Bytes sound, BytesView edits) {
  for (; edits.size() >= kEditSize; edits.remove_prefix(kEditSize)) {
    const std::size_t at = (ByteValue(edits[0]) << 8U | ByteValue(edits[1])) % (sound.size() + 1);
    sound.replace(at, ByteValue(edits[2]) / 2, ByteValue(edits[2]) % 2, edits[3]);
  }
  return sound;
}

/// Takes a byte off the input; 0 when none is left.
inline unsigned TakeByte(BytesView& input) {
  const unsigned byte = input.empty() ? 0 : ByteValue(input[0]);
  input = input.substr(input.empty() ? 0 : 1);
  return byte;
}

/// Takes a text up to the next "|", and that, off the input.
inline Bytes TakeText(BytesView& input) {
  Bytes text(input.substr(0, input.find('|')));
  input.remove_prefix(std::min(text.size() + 1, input.size()));
  return text;
}

/// Whether a text is made like the mask: "0" stands there for a digit, "~" for what a measured value has, "_"
/// for anything.
inline bool Looks(BytesView text, BytesView mask) {
  return std::ranges::equal(text, mask, [](char c, char place) {
    const bool digit = c >= '0' && c <= '9';
    if (place == '~') return digit || c == '.' || c == '#';
    return place == '_' || (place == '0' ? digit : c == place);
  });
}

}  // namespace ox

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) ox::Fuzz(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
  return 0;
}
