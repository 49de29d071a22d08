// What a driver is asked for, with a driver in memory: adapters are not at hand everywhere.
#include "platform/posix/low_latency.h"

#include <gtest/gtest.h>
#include <linux/tty_flags.h>
#include <sys/ioctl.h>

#include <cstring>
#include <memory>

namespace ox {

TEST(LowLatency, IsAskedForAndGivenBackAndNothingElseIsTouched) {
  constexpr int kOther = ASYNC_SKIP_TEST | ASYNC_SPD_VHI;
  constexpr int kLow = kOther | ASYNC_LOW_LATENCY;
  const std::tuple<const char*, int, unsigned long, std::vector<int>> rows[] = {
      {"an adapter", kOther, 0, {kLow, kOther}},
      {"asked for by somebody else", kLow, 0, {}},
      {"a pseudo-terminal", kOther, TIOCGSERIAL, {}},
      {"no rights", kOther, TIOCSSERIAL, {kLow}}};
  for (const auto& [line, flags, refused, told] : rows) {
    serial_struct settings;
    std::memset(&settings, 0x5A, sizeof settings);
    settings.flags = flags;
    const serial_struct before = settings;
    std::vector<int> seen;
    const auto driver = [&, no = refused](unsigned long request, serial_struct& given) {
      if (request == TIOCSSERIAL) seen.push_back(given.flags);
      if (request == no) return false;
      (request == TIOCGSERIAL ? given : settings) = request == TIOCGSERIAL ? settings : given;
      return true;
    };
    std::make_unique<LowLatency>(driver).reset();
    EXPECT_EQ(seen, told) << line;
    EXPECT_EQ(std::memcmp(&settings, &before, sizeof before), 0) << line;
  }
}

}  // namespace ox
