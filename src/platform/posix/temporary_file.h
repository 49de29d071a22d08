// A file beside another one, whose place it takes when it is complete.
#pragma once

#include <sys/stat.h>

#include <filesystem>

#include "platform/bytes.h"
#include "platform/posix/descriptor.h"

namespace ox {

/// Removed with this object, unless it was moved into place. Its name holds the number of this process. When
/// an operation returns false, errno holds the reason.
class TemporaryFile {
 public:
  /// Whether the file could be made is seen when it is written.
  explicit TemporaryFile(std::filesystem::path target);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  bool Write(BytesView content);

  /// Gives the file the owner, as far as we may, and the rights of the one that it replaces.
  bool TakeRightsOf(const struct stat& replaced);

  /// Writes the content to the disk, then puts the file in the target's place.
  bool MoveIntoPlace();

  /// Removes the temporary files that killed processes have left in a folder.
  static void RemoveLeftovers(const std::filesystem::path& folder);

 private:
  std::filesystem::path target_;
  std::filesystem::path path_;
  Descriptor file_;
  int makingError_ = 0;
  bool made_ = false;
};

}  // namespace ox
