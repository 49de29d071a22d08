// Files and folders in memory.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "platform/files.h"

namespace ox::test {

/// A small world of files under full paths or bare names. Folders are those that a path names.
class MemoryFiles : public Files {
 public:
  std::map<std::string, Bytes> content;
  std::map<std::string, std::string> links;  // what the path of a link leads to
  std::set<std::string> unreadable;  // files and folders that nobody may read; "folder*": all its files
  bool writable = true;
  std::size_t appendable = kNoLimit;  // appending fails once so many lines were written
  int openForAppending = 0;
  PathStyle style;
  std::string workingFolder = "/arbeit";
  std::vector<std::string> drives{"/"};

  using Files::Read;
  std::optional<Bytes> Read(const std::string& path, std::size_t limit) override {
    const auto file = content.find(path);
    if (file == content.end() || unreadable.contains(path)) return std::nullopt;
    return file->second.substr(0, limit);
  }

  bool Replace(const std::string& path, BytesView bytes) override {
    if (writable) content[Target(path)] = bytes;
    return writable;
  }

  bool SameFile(const std::string& one, const std::string& other) override {
    return content.contains(Target(one)) && Target(one) == Target(other);
  }

  bool Exists(const std::string& path) override { return links.contains(path) || content.contains(path); }

  std::unique_ptr<AppendFile> OpenForAppending(const std::string& path) override {
    if (!writable) return nullptr;
    content.try_emplace(path);
    return std::make_unique<Appender>(*this, path);
  }

  std::unique_ptr<AppendFile> MakeLog(const std::string& path) override {
    return content.contains(path) ? nullptr : OpenForAppending(path);
  }
  std::optional<std::uintmax_t> SizeOf(const std::string& path) override {
    const auto file = content.find(path);
    return file == content.end() ? std::nullopt : std::optional<std::uintmax_t>(file->second.size());
  }
  bool Remove(const std::string& path) override { return writable && content.erase(path) > 0; }

  PathStyle Style() const override { return style; }
  std::string WorkingFolder() override { return workingFolder; }
  std::vector<std::string> Drives() override { return drives; }

  std::optional<std::vector<std::string>> FoldersIn(const std::string& folder) override {
    return NamesIn(folder, true);
  }
  std::optional<std::vector<std::string>> FilesIn(const std::string& folder) override {
    return unreadable.contains(folder + "*") ? std::nullopt : NamesIn(folder, false);
  }

 private:
  std::string Target(const std::string& path) const { return links.contains(path) ? links.at(path) : path; }

  class Appender : public AppendFile {
   public:
    Appender(MemoryFiles& files, std::string path) : files_(files), path_(std::move(path)) {
      ++files_.openForAppending;
    }
    ~Appender() override { --files_.openForAppending; }
    bool Append(BytesView bytes) override {
      if (files_.appendable == 0) return false;
      if (files_.appendable != kNoLimit) --files_.appendable;
      files_.content[path_] += bytes;
      return true;
    }

   private:
    MemoryFiles& files_;
    std::string path_;
  };

  std::optional<std::vector<std::string>> NamesIn(std::string folder, bool folders) const {
    if (unreadable.contains(folder)) return std::nullopt;
    if (!folder.ends_with(style.separator)) folder += style.separator;
    std::set<std::string> names;
    bool exists = std::ranges::any_of(
        drives, [&](const std::string& drive) { return (drive + style.separator).starts_with(folder); });
    for (const auto& [path, bytes] : content) {
      if (!path.starts_with(folder)) continue;
      exists = true;
      const auto end = path.find(style.separator, folder.size());
      if ((end != Bytes::npos) == folders) names.insert(path.substr(folder.size(), end - folder.size()));
    }
    return exists ? std::optional(std::vector(names.begin(), names.end())) : std::nullopt;
  }
};

}  // namespace ox::test
