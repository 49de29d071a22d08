// The procedure that writes a new program into a device.
#pragma once

#include "programming/device_kind.h"
#include "programming/update_run.h"

namespace ox {

/// Writes `program`, of the size of the kind's format and with its check word (see ReadProgramFile), into a
/// device of this kind. All of them outlive the call.
UpdateEnd RunProgramUpdate(const DeviceKind& kind, LoaderLink& link, const DeviceSearch& search,
                           BytesView program, UpdateObserver& observer);

/// The same up to where the device would enter its loader: whether a device of this kind is there. Nothing is
/// written.
UpdateEnd RehearseProgramUpdate(const DeviceKind& kind, LoaderLink& link, const DeviceSearch& search,
                                UpdateObserver& observer);

}  // namespace ox
