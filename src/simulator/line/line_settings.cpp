// Reading line settings.
#include "simulator/line/line_settings.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace ox::sim {
namespace {

constexpr unsigned kMinDataBits = 5;
constexpr unsigned kMaxDataBits = 8;
constexpr unsigned kStopBits = 1;
constexpr unsigned kSevenBitMask = 0x7F;

// Takes the field up to the next comma off the text; the last field has none.
BytesView TakeField(BytesView& text) {
  const size_t comma = std::min(text.find(','), text.size());
  const BytesView field = text.substr(0, comma);
  text.remove_prefix(std::min(comma + 1, text.size()));
  return field;
}

std::optional<unsigned> ParseNumber(BytesView digits) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

bool IsParity(char letter) {
  return letter == 'O' || letter == 'E' || letter == 'N';
}

}  // namespace

std::optional<LineSettings> ParseLineSettings(BytesView text) {
  const auto baud = ParseNumber(TakeField(text));
  const BytesView parity = TakeField(text);
  const auto dataBits = ParseNumber(TakeField(text));
  if (!baud || *baud == 0 || parity.size() != 1 || !dataBits || ParseNumber(text) != kStopBits)
    return std::nullopt;
  const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(parity[0])));
  if (!IsParity(letter) || *dataBits < kMinDataBits || *dataBits > kMaxDataBits) return std::nullopt;
  return LineSettings{*baud, letter, *dataBits};
}

Seconds CharacterTime(const LineSettings& line) {
  constexpr unsigned kStartAndStopBit = 2;
  const unsigned bits = line.dataBits + (line.parity == 'N' ? 0 : 1) + kStartAndStopBit;
  return static_cast<Seconds>(bits) / line.baud;
}

Bytes MaskedTo(BytesView bytes, unsigned dataBits) {
  Bytes masked(bytes);
  if (dataBits == 7) {
    for (char& byte : masked) byte = ByteOf(ByteValue(byte) & kSevenBitMask);
  }
  return masked;
}

}  // namespace ox::sim
