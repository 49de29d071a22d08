// The procedure that writes a new program into a device.
#pragma once

#include "programming/device_kind.h"
#include "programming/update_run.h"

namespace ox {

/// Writes `program`, of the size of the kind's format and with its check word (see ReadProgramFile), into a
/// device of this kind. All of them outlive the call.
UpdateEnd RunProgramUpdate(const DeviceKind& kind, LoaderLink& link, const DeviceSearch& search,
                           BytesView program, UpdateObserver& observer);

}  // namespace ox
