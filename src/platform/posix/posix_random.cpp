// Random numbers, seeded anew by the host for each run.
#include "platform/posix/posix_random.h"

namespace ox {
namespace {

constexpr int kSpareBits = 64 - 53;  // a double holds 53 bits exactly, so 1 is never reached by rounding
constexpr double kUnit = 1.0 / (1ULL << 53);

}  // namespace

double PosixRandom::Next() {
  return static_cast<double>(engine_() >> kSpareBits) * kUnit;
}

}  // namespace ox
