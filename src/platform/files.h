// Files, folders and drives of the host. Paths are UTF-8; a bare name lies in the working folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/bytes.h"

namespace ox {

/// A text file open for appending; it is closed with this object.
class AppendFile {
 public:
  virtual ~AppendFile() = default;

  /// Appends the bytes; false when that failed.
  virtual bool Append(BytesView bytes) = 0;
};

/// How the host writes its paths.
struct PathStyle {
  char separator = '/';
  bool driveLetters = false;  // drives are "C:"; without them a drive is the folder where a volume is mounted
};

class Files {
 public:
  static constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

  virtual ~Files() = default;

  /// The file's content, cut off after `limit` bytes; nothing when it cannot be opened or read (a folder, no
  /// rights).
  virtual std::optional<Bytes> Read(const std::string& path, std::size_t limit) = 0;
  std::optional<Bytes> Read(const std::string& path) { return Read(path, kNoLimit); }

  /// What a pipe brings until its writers have closed it, cut off after `limit` bytes; waits for that as long
  /// as it takes. Nothing when the path is no pipe, or the host has none under a path.
  virtual std::optional<Bytes> ReadPipe(const std::string& /*path*/, std::size_t /*limit*/) {
    return std::nullopt;
  }

  /// Writes the content beside the file and renames it into its place, so that the file is never half
  /// written; where folder or volume refuse that, writes it into the file itself. False, with the file as it
  /// was, when that failed.
  virtual bool Replace(const std::string& path, BytesView content) = 0;

  /// Whether both paths lead to one file that exists: by links, another spelling, another name of it.
  virtual bool SameFile(const std::string& one, const std::string& other) = 0;

  /// Whether something has that name: a file, a folder, a device, also a link that leads nowhere where the
  /// host knows such links.
  virtual bool Exists(const std::string& path) { return SameFile(path, path); }

  /// Opens a file at its end, made when missing; null when that failed. What is appended is on the disk when
  /// Append returns.
  virtual std::unique_ptr<AppendFile> OpenForAppending(const std::string& path) = 0;

  /// Makes a new file to append to; null when something has that name already, or when that failed. Append
  /// does not wait for the disk: what is appended outlives the program, and the PC some seconds later.
  virtual std::unique_ptr<AppendFile> MakeLog(const std::string& path) = 0;

  /// Size of a file in bytes; nothing when there is no file of that name.
  virtual std::optional<std::uintmax_t> SizeOf(const std::string& path) = 0;

  /// Deletes a file; false when that failed.
  virtual bool Remove(const std::string& path) = 0;

  virtual PathStyle Style() const = 0;

  /// The folder in which bare names lie, as a full path.
  virtual std::string WorkingFolder() = 0;

  /// The drives of the machine: "C:" and so on, or "/" and the mounted volumes.
  virtual std::vector<std::string> Drives() = 0;

  /// Names, sorted, of the folders and of the files in a folder (full path); nothing when the folder cannot
  /// be read.
  virtual std::optional<std::vector<std::string>> FoldersIn(const std::string& folder) = 0;
  virtual std::optional<std::vector<std::string>> FilesIn(const std::string& folder) = 0;
};

}  // namespace ox
