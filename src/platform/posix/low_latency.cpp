// One flag among a driver's settings.
#include "platform/posix/low_latency.h"

#include <linux/tty_flags.h>
#include <sys/ioctl.h>

#include <utility>

namespace ox {
namespace {

constexpr int kLowLatency = ASYNC_LOW_LATENCY;

}  // namespace

DriverCall DriverOf(int terminal) {
  return [terminal](unsigned long request, serial_struct& settings) {
    return ioctl(terminal, request, &settings) == 0;
  };
}

LowLatency::LowLatency(DriverCall driver) : driver_(std::move(driver)) {
  serial_struct settings{};
  if (!driver_(TIOCGSERIAL, settings) || (settings.flags & kLowLatency) != 0) return;
  settings.flags |= kLowLatency;
  asked_ = driver_(TIOCSSERIAL, settings);
}

LowLatency::~LowLatency() {
  serial_struct settings{};
  if (!asked_ || !driver_(TIOCGSERIAL, settings)) return;
  settings.flags &= ~kLowLatency;
  driver_(TIOCSSERIAL, settings);
}

}  // namespace ox
