// The parameters of a serial line, read from their text.
#include "platform/line_settings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "platform/serial_port.h"

namespace ox {
namespace {

struct Speed {
  std::string_view text;
  unsigned baud;
};

constexpr std::array kSpeeds = {Speed{"300", 300},       Speed{"600", 600},       Speed{"1200", 1200},
                                Speed{"2400", 2400},     Speed{"4800", 4800},     Speed{"9600", 9600},
                                Speed{"19200", 19200},   Speed{"38400", 38400},   Speed{"57600", 57600},
                                Speed{"115200", 115200}, Speed{"230400", 230400}, Speed{"921600", 921600}};

std::optional<LineParity> ParityOf(std::string_view text) {
  if (text == "N" || text == "n") return LineParity::kNone;
  if (text == "O" || text == "o") return LineParity::kOdd;
  if (text == "E" || text == "e") return LineParity::kEven;
  return std::nullopt;
}

/// A number of bits: one digit out of the two that are allowed.
std::optional<int> BitsOf(std::string_view text, char smaller, char larger) {
  if (text.size() != 1 || (text[0] != smaller && text[0] != larger)) return std::nullopt;
  return text[0] - '0';
}

/// Takes the text up to the next comma off its front.
std::string_view TakeValue(std::string_view& text) {
  const std::size_t comma = text.find(',');
  const std::string_view value = text.substr(0, comma);
  text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  return value;
}

}  // namespace

Bytes LineSettings::Cut(BytesView bytes) const {
  const unsigned mask = (1U << dataBits) - 1;
  Bytes cut(bytes);
  std::transform(cut.begin(), cut.end(), cut.begin(),
                 [mask](char byte) { return ByteOf(ByteValue(byte) & mask); });
  return cut;
}

std::chrono::nanoseconds LineSettings::CharacterTime() const {
  constexpr int kStartBits = 1;
  const int bits = kStartBits + dataBits + (parity == LineParity::kNone ? 0 : 1) + stopBits;
  return std::chrono::nanoseconds(std::chrono::seconds(bits)) / baud;
}

LineSettings ParseLineSettings(std::string_view text) {
  std::string_view rest = text;
  const std::string_view baud = TakeValue(rest);
  const auto* const speed =
      std::find_if(kSpeeds.begin(), kSpeeds.end(), [&](const Speed& each) { return each.text == baud; });
  const std::optional<LineParity> parity = ParityOf(TakeValue(rest));
  const std::optional<int> dataBits = BitsOf(TakeValue(rest), '7', '8');
  // What is left is the last value and, if anything, what is too much.
  const std::optional<int> stopBits = BitsOf(rest, '1', '2');
  if (speed == kSpeeds.end() || !parity || !dataBits || !stopBits) {
    throw PortError("Schnittstellenparameter \"" + std::string(text) + "\" gibt es nicht",
                    "Ein Verbindungstest setzt sie zurecht");
  }
  return {speed->baud, *parity, *dataBits, *stopBits};
}

}  // namespace ox
