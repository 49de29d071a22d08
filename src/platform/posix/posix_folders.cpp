// Folders and volumes of this host.
#include <mntent.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

#include "platform/posix/posix_files.h"
#include "platform/utf8.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

constexpr const char* kRoot = "/";
constexpr std::size_t kLongestMountLine = 4096;  // bytes; a longer one is cut off

/// Volumes of other machines; all others that count come from a device.
bool IsNetworkVolume(std::string_view type) {
  constexpr std::array<std::string_view, 7> kTypes = {"nfs", "nfs4",   "cifs",      "smb3",
                                                      "9p",  "vboxsf", "fuse.sshfs"};
  return std::find(kTypes.begin(), kTypes.end(), type) != kTypes.end();
}

/// Whether a user looks for files there: no view into the kernel, no packed program, no single mounted file.
bool IsDrive(const mntent& volume) {
  if (!IsUtf8(volume.mnt_dir)) return false;
  if (IsNetworkVolume(volume.mnt_type))
    return true;  // not looked into, since the other machine may not answer
  std::error_code error;
  return std::string_view(volume.mnt_fsname).starts_with("/dev/") &&
         std::string_view(volume.mnt_type) != "squashfs" && fs::is_directory(volume.mnt_dir, error);
}

using Test = bool (*)(const fs::directory_entry& entry, std::error_code& error);

/// Names of the entries that the test accepts; a link counts as what it leads to.
std::optional<std::vector<std::string>> NamesIn(const std::string& folder, Test accepts) {
  if (folder.find('\0') != std::string::npos) return std::nullopt;
  std::error_code error;
  std::vector<std::string> names;
  for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
       entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    std::error_code unknown;  // of this entry alone: a link that leads nowhere, for example
    if (!name.starts_with('.') && IsUtf8(name) && accepts(*entry, unknown)) names.push_back(name);
  }
  if (error) return std::nullopt;
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

std::string PosixFiles::WorkingFolder() {
  std::error_code error;
  const std::string folder = fs::current_path(error).string();
  return error ? kRoot : folder;  // somebody deleted the folder that we run in
}

std::vector<std::string> PosixFiles::Drives() {
  std::vector<std::string> drives = {kRoot};
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> table(setmntent("/proc/self/mounts", "r"), endmntent);
  if (!table) return drives;
  mntent volume{};
  std::array<char, kLongestMountLine> line{};
  while (getmntent_r(table.get(), &volume, line.data(), static_cast<int>(line.size())) != nullptr) {
    if (IsDrive(volume)) drives.emplace_back(volume.mnt_dir);
  }
  std::sort(drives.begin(), drives.end());
  drives.erase(std::unique(drives.begin(), drives.end()), drives.end());
  return drives;
}

std::optional<std::vector<std::string>> PosixFiles::FoldersIn(const std::string& folder) {
  return NamesIn(folder, [](const fs::directory_entry& entry, std::error_code& error) {
    return entry.is_directory(error);
  });
}

std::optional<std::vector<std::string>> PosixFiles::FilesIn(const std::string& folder) {
  return NamesIn(folder, [](const fs::directory_entry& entry, std::error_code& error) {
    return entry.is_regular_file(error);
  });
}

}  // namespace ox
