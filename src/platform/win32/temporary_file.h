// A file beside another one, whose place it takes when it is complete.
#pragma once

#include <string>

#include "platform/bytes.h"
#include "platform/win32/handle.h"

namespace ox {

/// Removed with this object, unless it was moved into place. Its name holds the number of this process. When
/// an operation returns false, GetLastError tells the reason.
class TemporaryFile {
 public:
  /// `target` is a full path (HostPath). Whether the file could be made is seen when it is written.
  explicit TemporaryFile(std::wstring target);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  bool Write(BytesView content);

  /// Gives the file the marks (hidden, system) and the list of rights of the one that it replaces.
  bool TakeRightsOfTarget();

  /// Writes the content to the disk, then puts the file in the target's place.
  bool MoveIntoPlace();

  /// Removes the temporary files that killed processes have left in a folder, a full path.
  static void RemoveLeftovers(const std::wstring& folder);

 private:
  std::wstring target_;
  std::wstring path_;
  Handle file_;
  unsigned long makingError_ = 0;
  bool made_ = false;
};

}  // namespace ox
