// Building the status request.
#include "power/power_request.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "platform/line_ends.h"

namespace ox {
namespace {

constexpr char kStatusRequest = '>';
/// Leaves the port as seven bits.
constexpr unsigned kNoPresetByte = 0xFF;

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kBlanks = " \t";

/// Cuts the digits off the front of the text.
std::string_view TakeDigits(std::string_view& text) {
  const std::string_view digits = text.substr(0, text.find_first_not_of(kDigits));
  text.remove_prefix(digits.size());
  return digits;
}

int CappedValue(std::string_view digits) {
  int value = 0;
  for (const char digit : digits) {
    value = std::min<int>(value * 10 + (digit - '0'), std::numeric_limits<std::int16_t>::max());
  }
  return value;
}

/// Whether a number with these decimals is nearer to the next whole number, or half way to an even one.
bool RoundsUp(int whole, std::string_view decimals) {
  if (decimals.empty() || decimals.front() != '5') return !decimals.empty() && decimals.front() > '5';
  const bool half = decimals.find_first_not_of('0', 1) == std::string_view::npos;
  return !half || whole % 2 != 0;
}

}  // namespace

int ReadPreset(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  int value = CappedValue(TakeDigits(text));
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    if (RoundsUp(value, TakeDigits(text))) ++value;
  }
  value = std::min<int>(value, std::numeric_limits<std::int16_t>::max());
  return negative ? -value : value;
}

Bytes BuildStatusRequest(int charge) {
  const unsigned preset = IsPreset(charge) ? static_cast<unsigned>(charge) : kNoPresetByte;
  return {kStatusRequest, ByteOf(preset), kCr};
}

}  // namespace ox
