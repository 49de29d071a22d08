// Following the line's level from bit to bit.
#include "simulator/line/crossing.h"

#include <cmath>

namespace ox::sim {
namespace {

constexpr char kNoParity = 'N';
constexpr char kReadForDamaged = '\0';

// The parity bit that makes the number of ones even or odd.
bool ParityBit(unsigned data, char parity) {
  bool odd = parity == 'O';
  for (; data != 0; data &= data - 1) odd = !odd;
  return odd;
}

// The level of the line while one character is sent; the time is counted in the sender's bits.
class Wave {
 public:
  Wave(char character, const LineSettings& from) {
    const unsigned data = ByteValue(character) & ((1U << from.dataBits) - 1);
    levels_.push_back(false);  // start bit
    for (unsigned bit = 0; bit < from.dataBits; ++bit) levels_.push_back((data >> bit & 1U) != 0);
    if (from.parity != kNoParity) levels_.push_back(ParityBit(data, from.parity));
    levels_.push_back(true);  // stop bit
  }

  bool Over(double time) const { return time >= static_cast<double>(levels_.size()); }
  bool High(double time) const { return Over(time) || levels_[static_cast<std::size_t>(time)]; }

  // When the level that is found at a time ends, or the bit that it consists of.
  static double NextBit(double time) { return std::floor(time) + 1; }

 private:
  std::vector<bool> levels_;
};

// The character whose start bit begins at a time; moves the time into its stop bit. `bit` is the length of
// the receiver's bits, which it looks at in their middle.
HeardCharacter TakeOne(const Wave& wave, double& time, double bit, const LineSettings& to) {
  constexpr double kMiddle = 0.5;
  time += kMiddle * bit;
  unsigned data = 0;
  for (unsigned i = 0; i < to.dataBits; ++i) {
    time += bit;
    if (wave.High(time)) data |= 1U << i;
  }
  bool damaged = false;
  if (to.parity != kNoParity) {
    time += bit;
    damaged = wave.High(time) != ParityBit(data, to.parity);
  }
  time += bit;
  return {ByteOf(data), damaged || !wave.High(time)};
}

}  // namespace

std::vector<HeardCharacter> Cross(char character, const LineSettings& from, const LineSettings& to) {
  const Wave wave(character, from);
  const double bit = static_cast<double>(from.baud) / to.baud;
  std::vector<HeardCharacter> heard;
  double time = 0;
  bool wasHigh = true;
  while (!wave.Over(time)) {
    const bool high = wave.High(time);
    if (wasHigh && !high) {
      heard.push_back(TakeOne(wave, time, bit, to));
      wasHigh = wave.High(time);
    } else {
      wasHigh = high;
      time = Wave::NextBit(time);
    }
  }
  return heard;
}

Bytes CrossToPc(BytesView characters, const LineSettings& from, const LineSettings& pc) {
  if (from == pc) return MaskedTo(characters, pc.dataBits);
  Bytes read;
  for (const char character : characters) {
    for (const HeardCharacter& heard : Cross(character, from, pc)) {
      const bool noticed = heard.damaged && pc.parity != kNoParity;
      read += noticed ? kReadForDamaged : heard.character;
    }
  }
  return read;
}

}  // namespace ox::sim
