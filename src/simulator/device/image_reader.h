// Reading the station tables back out of the two kinds of table image, as the devices do.
#pragma once

#include <optional>

#include "platform/bytes.h"
#include "simulator/device/station_data.h"

namespace ox::sim {

/// Both readers want a whole image of kTableImageSize bytes with the right checksum. An image of which any
/// byte, address, distance, count, end mark or filler is not as it should be gives nothing; no image can do
/// more harm.

/// The image of devices up to generation II: the tables as packed texts behind two addresses.
std::optional<StationData> ReadOlderImage(BytesView image);

/// The image of generation III: version, parameters, offices and measuring points as binary sections. A
/// measuring point must have parameters here, and must know its office and its parameters from the other
/// sections.
std::optional<StationData> ReadGeneration3Image(BytesView image);

}  // namespace ox::sim
