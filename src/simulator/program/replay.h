// oxsim --replay: a support log in the device's place.
#pragma once

#include <csignal>
#include <functional>

#include "simulator/program/options.h"

namespace ox::sim {

/// Exit status when the PC did otherwise than in the log.
constexpr int kPcDiffers = 3;

/// Plays the log on the port until it is over, the PC does otherwise, or `endWanted`; tells that in German
/// and returns the exit status: 0 when all was played. Signals come while the host waits with `awaited`.
/// Throws std::exception with a German text when the log cannot be read or the port not be made.
int PlayLog(const SimulatorOptions& options, const sigset_t& awaited, const std::function<bool()>& endWanted);

}  // namespace ox::sim
