// The time of the simulated devices.
#pragma once

namespace ox::sim {

/// Seconds since an arbitrary start; always given from outside, never falls back.
using Seconds = double;

}  // namespace ox::sim
