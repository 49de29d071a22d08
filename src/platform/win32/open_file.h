// Opening what lies on a disk of this host.
#pragma once

#include <string>

#include "platform/win32/handle.h"

namespace ox {

/// What others may do with a file meanwhile: read, write and delete it.
extern const unsigned long kShareAll;

/// Opens a file, but no folder. `path` is a full path (HostPath); the others are CreateFile's access, sharing
/// and creation. None, with GetLastError, when that failed.
Handle OpenFile(const std::wstring& path, unsigned long access, unsigned long sharing,
                unsigned long creation);

/// Opens a file or folder just to ask about it; a link counts as what it leads to.
Handle OpenAny(const std::wstring& path);

/// Whether a handle is valid and that of a file on a disk, not of a folder, a pipe or a device.
bool IsRegular(const Handle& file);

/// Whether both full paths lead to one file or folder that exists.
bool LeadToOneFile(const std::wstring& one, const std::wstring& other);

}  // namespace ox
