// A seed from the host's own source.
#include "platform/win32/win32_random.h"

#include "platform/win32/windows_api.h"
// Behind the host's declarations, which it needs.
#include <bcrypt.h>

namespace ox {
namespace {

/// The source fails only where the host is about to fall; a run with the usual seed is better than none.
std::uint64_t Seed() {
  std::uint64_t seed = std::mt19937_64::default_seed;
  BCryptGenRandom(nullptr, reinterpret_cast<PUCHAR>(&seed), sizeof seed, BCRYPT_USE_SYSTEM_PREFERRED_RNG);
  return seed;
}

}  // namespace

Win32Random::Win32Random() : SeededRandom(Seed()) {}

}  // namespace ox
