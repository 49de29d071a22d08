// Files, folders and volumes of this host.
#pragma once

#include "platform/files.h"

namespace ox {

class PosixFiles : public Files {
 public:
  using Files::Read;
  /// Reads regular files only: a device or a pipe could block or never end.
  std::optional<Bytes> Read(const std::string& path, std::size_t limit) override;
  std::optional<Bytes> ReadPipe(const std::string& path, std::size_t limit) override;
  /// Replaces what a symbolic link leads to, not the link; an existing file keeps its rights, a
  /// write-protected one stays. Clears away what killed programs have left in the folder.
  bool Replace(const std::string& path, BytesView content) override;
  bool SameFile(const std::string& one, const std::string& other) override;
  bool Exists(const std::string& path) override;
  std::unique_ptr<AppendFile> OpenForAppending(const std::string& path) override;
  std::unique_ptr<AppendFile> MakeLog(const std::string& path) override;
  std::optional<std::uintmax_t> SizeOf(const std::string& path) override;
  bool Remove(const std::string& path) override;

  PathStyle Style() const override { return {'/', false}; }
  std::string WorkingFolder() override;
  std::vector<std::string> Drives() override;

  // Hidden entries, links that lead nowhere and names that are no UTF-8 are left out.
  std::optional<std::vector<std::string>> FoldersIn(const std::string& folder) override;
  std::optional<std::vector<std::string>> FilesIn(const std::string& folder) override;
};

}  // namespace ox
