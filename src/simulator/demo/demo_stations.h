// The tables that oxsim gives its device to start with.
#pragma once

#include <optional>
#include <string>

#include "simulator/device/station_data.h"

namespace ox::sim {

/// The network of netz.mes, netz.par and netz.zuo in a folder, by way of the image that a device would read;
/// `older` chooses which of the two. Nothing when a file is missing or faulty; what is wrong with it goes to
/// the standard error stream.
std::optional<StationData> ReadDemoStations(const std::string& folder, bool older);

}  // namespace ox::sim
