// Numbers of 64 bits as fractions.
#include "platform/seeded_random.h"

namespace ox {
namespace {

constexpr int kSpareBits = 64 - 53;  // a double holds 53 bits exactly, so 1 is never reached by rounding
constexpr double kUnit = 1.0 / (1ULL << 53);

}  // namespace

double SeededRandom::Next() {
  return static_cast<double>(engine_() >> kSpareBits) * kUnit;
}

}  // namespace ox
