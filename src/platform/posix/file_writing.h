// Bytes on their way to the disk. What an operation that returned false failed at stands in errno.
#pragma once

#include "platform/bytes.h"
#include "platform/posix/descriptor.h"

namespace ox {

/// Writes all the bytes where the file stands; false when the host did not take them.
bool WriteAll(const Descriptor& file, BytesView bytes);

/// Waits until the disk has what was written; false when it failed. A file system that cannot say is taken at
/// its word.
bool HandToDisk(const Descriptor& file);

/// Whether an error says that we may not, or that the file system knows no such thing; false for a failure
/// such as a full disk.
bool IsRefusal(int error);

}  // namespace ox
