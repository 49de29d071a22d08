// Bytes on their way to the disk. When an operation returns false, GetLastError tells the reason.
#pragma once

#include "platform/bytes.h"
#include "platform/win32/handle.h"

namespace ox {

/// Writes all the bytes where the file stands; false when the host did not take them.
bool WriteAll(const Handle& file, BytesView bytes);

/// Waits until what was written is on the disk; false when that failed. A volume that cannot tell counts as
/// one that succeeded.
bool HandToDisk(const Handle& file);

/// Whether an error says that we may not, that somebody else has the file, or that the volume knows no such
/// thing; false for a failure such as a full disk.
bool IsRefusal(unsigned long error);

}  // namespace ox
