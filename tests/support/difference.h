// Where bytes are not what they should be, told by what they mean there.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "platform/bytes.h"

namespace ox::test {

/// The parts that bytes are made of, in their order: where each begins and what it is called.
using Parts = std::vector<std::pair<std::size_t, std::string>>;

/// Of a table image of either kind: older ones begin with an address, those of generation III with a
/// distance.
inline Parts PartsOfImage(BytesView image) {
  constexpr std::size_t kChecksumAt = 16382, kImageAddress = 0x8000, kSlotSize = 4, kFirstDistance = 16;
  if (image.size() <= kChecksumAt) return {{0, "too short for an image"}};
  const auto slot = [&](std::size_t number) {
    const std::size_t at = number * kSlotSize;
    return at + (ByteValue(image[at]) | ByteValue(image[at + 1]) << 8U);
  };
  Parts parts{
      {0, "head"}, {2 * kSlotSize, "measuring points"}, {slot(1) - kSlotSize - kImageAddress, "parameters"}};
  if (slot(0) == kFirstDistance)
    parts = {{0, "head"},
             {slot(0), "version"},
             {slot(1), "parameters"},
             {slot(2), "offices"},
             {slot(3), "points"}};
  parts.emplace_back(image.substr(0, kChecksumAt).find_last_not_of('\xFF') + 1, "filler");
  parts.emplace_back(kChecksumAt, "checksum");
  return parts;
}

/// Of bytes that are made of pieces of one length: pages of a program, records of its file.
inline Parts PartsOfLength(BytesView bytes, std::size_t length, const std::string& name) {
  Parts parts;
  for (std::size_t at = 0; at < bytes.size(); at += length)
    parts.emplace_back(at, name + " " + std::to_string(at / length));
  return parts;
}

inline Parts Lines(BytesView text) {
  Parts parts{{0, "line 1"}};
  for (std::size_t at = 0; (at = text.find('\n', at)) != BytesView::npos;)
    parts.emplace_back(++at, "line " + std::to_string(parts.size() + 1));
  return parts;
}

/// Empty when both are the same; else the part in which the first difference lies, and what stands there.
inline std::string Difference(BytesView seen, BytesView expected, const Parts& parts) {
  const auto at = static_cast<std::size_t>(std::ranges::mismatch(seen, expected).in1 - seen.begin());
  if (at == seen.size() && at == expected.size()) return {};
  const auto behind = std::ranges::upper_bound(parts, at, {}, &Parts::value_type::first);
  const auto& [start, name] = behind == parts.begin() ? parts.front() : behind[-1];
  const auto shown = [at](BytesView bytes) {
    constexpr std::size_t kShown = 16;
    std::string hex, text;
    for (const char byte : bytes.substr(std::min(at, bytes.size()), kShown)) {
      char digits[4];
      std::snprintf(digits, sizeof digits, "%02X ", ByteValue(byte));
      hex += digits;
      text += byte >= ' ' && byte <= '~' ? byte : '.';
    }
    return hex + "\"" + text + "\" of " + std::to_string(bytes.size());
  };
  return name + " + " + std::to_string(at - start) + ", byte " + std::to_string(at) + ": seen " +
         shown(seen) + ", expected " + shown(expected);
}

}  // namespace ox::test
