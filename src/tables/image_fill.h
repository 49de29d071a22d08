// How full the images of loaded tables will be: shown before they are written.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/bytes.h"
#include "tables/table_images.h"

namespace ox {

/// The images of the three packed tables as the update makes them when its user goes on at every warning, but
/// without a message. Nothing when the tables do not fit together.
std::optional<TableImages> BuildImagesSilently(BytesView points, BytesView parameters, BytesView assignments);

/// So many bytes of an image's room: "5312 von 16380 Bytes (33 %)", UTF-8 on one line; percent are rounded
/// up.
std::string DescribeShare(std::size_t used);

/// What an image takes of its room, in these words. An image that cannot be written says why.
std::string DescribeFill(const TableImage& image);

}  // namespace ox
