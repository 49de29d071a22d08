// A file beside another one, whose place it takes when it is complete.
#pragma once

#include <sys/stat.h>

#include <filesystem>

#include "platform/bytes.h"
#include "platform/posix/descriptor.h"

namespace ox {

/// Vanishes with this object, unless it was moved into place. Its name holds the number of this process. What
/// an operation that returned false failed at stands in errno.
class TemporaryFile {
 public:
  /// Whether the file could be made shows when it is written.
  explicit TemporaryFile(std::filesystem::path target);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  bool Write(BytesView content);

  /// Gives the file the owner, as far as we may, and the rights of the one that it replaces.
  bool TakeRightsOf(const struct stat& replaced);

  /// Has the disk take the content, then puts the file in the target's place.
  bool MoveIntoPlace();

  /// Removes what processes that are dead by now, killed at their work, have left in a folder.
  static void RemoveLeftovers(const std::filesystem::path& folder);

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;
  Descriptor file_;
  int makingError_ = 0;
  bool made_ = false;
};

}  // namespace ox
