// The procedures that make device images of the three station tables and write one of them into a device.
#pragma once

#include <optional>

#include "programming/update_run.h"
#include "tables/table_images.h"
#include "tables/table_messages.h"

namespace ox {

/// The three packed tables, none of them empty.
struct StationTables {
  BytesView points;
  BytesView parameters;
  BytesView assignments;
};

/// Links the tables and builds the images of all generations; nothing is sent. Linking reports to `messages`
/// and may ask there; nothing after a message when the tables do not fit together, or do not fit into a
/// device.
std::optional<TableImages> BuildLinkedImages(const StationTables& tables, TableMessages& messages,
                                             UpdateObserver& observer);

/// Brings a device into its loader, asks for its kind and writes the image that it takes. All of them outlive
/// the call.
UpdateEnd RunTableUpdate(LoaderLink& link, const DeviceSearch& search, const TableImages& images,
                         UpdateObserver& observer);

/// The same up to where the device would enter its loader: whether a device is there that takes the tables. A
/// device that is in its loader already is asked for its kind. Nothing is written.
UpdateEnd RehearseTableUpdate(LoaderLink& link, const DeviceSearch& search, const TableImages& images,
                              UpdateObserver& observer);

}  // namespace ox
