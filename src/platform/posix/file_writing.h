// Bytes on their way to the disk. When an operation returns false, errno holds the reason.
#pragma once

#include "platform/bytes.h"
#include "platform/posix/descriptor.h"

namespace ox {

/// Writes all the bytes where the file stands; false when the host did not take them.
bool WriteAll(const Descriptor& file, BytesView bytes);

/// Waits until what was written is on the disk; false when that failed. A file system that cannot tell counts
/// as one that succeeded.
bool HandToDisk(const Descriptor& file);

/// Whether an error says that we may not, or that the file system knows no such thing; false for a failure
/// such as a full disk.
bool IsRefusal(int error);

}  // namespace ox
