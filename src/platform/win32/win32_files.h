// Files, folders and drives of this host.
#pragma once

#include "platform/files.h"

namespace ox {

/// Paths may be of any length. Devices ("NUL", "COM1.txt"), under whatever path, are no files. The host shows
/// no box of its own from the making of this object on, so that a drive without a medium is simply not
/// readable.
class Win32Files : public Files {
 public:
  Win32Files();

  using Files::Read;
  std::optional<Bytes> Read(const std::string& path, std::size_t limit) override;
  /// Replaces what a symbolic link leads to, not the link; an existing file keeps its rights and marks, a
  /// write-protected one stays. Clears away what killed programs have left in the folder.
  bool Replace(const std::string& path, BytesView content) override;
  bool Exists(const std::string& path) override;
  bool SameFile(const std::string& one, const std::string& other) override;
  /// Others may read and append meanwhile, but not delete it.
  std::unique_ptr<AppendFile> OpenForAppending(const std::string& path) override;
  std::unique_ptr<AppendFile> MakeLog(const std::string& path) override;
  std::optional<std::uintmax_t> SizeOf(const std::string& path) override;
  bool Remove(const std::string& path) override;

  PathStyle Style() const override { return {'\\', true}; }
  std::string WorkingFolder() override;
  std::vector<std::string> Drives() override;

  // Sorted as the host shows them, without regard to upper and lower case. Hidden entries, links that lead
  // nowhere and names with half a character are left out.
  std::optional<std::vector<std::string>> FoldersIn(const std::string& folder) override;
  std::optional<std::vector<std::string>> FilesIn(const std::string& folder) override;
};

}  // namespace ox
