// Reading, replacing and appending to files of this host.
#include "platform/posix/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/file_writing.h"
#include "platform/posix/temporary_file.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kReadSize = 65536;  // bytes
constexpr mode_t kNewFile = 0666;         // rights, before the user's mask
constexpr int kMostLinks = 40;            // as the host itself

/// The host would take a path with a zero character for another one, which ends there.
bool IsPath(const std::string& path) {
  return path.find('\0') == std::string::npos;
}

/// Opens a regular file, but no device and no pipe. `flags` may make the file.
Descriptor OpenRegular(const std::string& path, int flags) {
  if (!IsPath(path)) return Descriptor();
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return Descriptor();
  return Descriptor(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFile));
}

/// Reads an open file to its end; nothing when that fails or none is open.
std::optional<Bytes> ReadOpen(const Descriptor& file, std::size_t limit) {
  struct stat status {};
  if (!file.Valid() || fstat(file.Number(), &status) != 0) return std::nullopt;
  Bytes content;
  // Room for the whole file at once: growing piece by piece would take twice as much.
  content.reserve(std::min(limit, static_cast<std::size_t>(status.st_size) + kReadSize));
  while (content.size() < limit) {
    const std::size_t before = content.size();
    const std::size_t room = std::min(kReadSize, limit - before);
    content.resize(before + room);
    const ssize_t count = read(file.Number(), content.data() + before, room);
    const bool interrupted = count < 0 && errno == EINTR;
    if (count < 0 && !interrupted) return std::nullopt;
    content.resize(before + (interrupted ? 0 : static_cast<std::size_t>(count)));
    if (count == 0) break;
  }
  return content;
}

/// What the links lead to, even if it does not exist yet; nothing when they go round in a circle.
std::optional<fs::path> WithoutLinks(fs::path path) {
  std::error_code error;
  for (int links = 0; links < kMostLinks; ++links) {
    if (!fs::is_symlink(path, error)) return path;
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return std::nullopt;
}

/// Replaces the content of an open file.
bool Overwrite(const Descriptor& file, BytesView content) {
  return lseek(file.Number(), 0, SEEK_SET) == 0 && WriteAll(file, content) &&
         ftruncate(file.Number(), static_cast<off_t>(content.size())) == 0 && HandToDisk(file);
}

/// Puts a new file in the place of the target, which is `existing` where there is one; returns 0, or the
/// error that it failed at.
int ReplaceByNewFile(const fs::path& target, const struct stat* existing, BytesView content) {
  TemporaryFile::RemoveLeftovers(target.parent_path());
  TemporaryFile file(target);
  const bool replaced =
      file.Write(content) && (existing == nullptr || file.TakeRightsOf(*existing)) && file.MoveIntoPlace();
  return replaced ? 0 : errno;
}

class PosixAppendFile : public AppendFile {
 public:
  PosixAppendFile(Descriptor file, bool toDisk) : file_(std::move(file)), toDisk_(toDisk) {}

  bool Append(BytesView bytes) override { return WriteAll(file_, bytes) && (!toDisk_ || HandToDisk(file_)); }

 private:
  Descriptor file_;
  bool toDisk_;  // waits until the bytes are there
};

std::unique_ptr<AppendFile> AppendTo(Descriptor file, bool toDisk) {
  if (!file.Valid()) return nullptr;
  return std::make_unique<PosixAppendFile>(std::move(file), toDisk);
}

}  // namespace

std::optional<Bytes> PosixFiles::Read(const std::string& path, std::size_t limit) {
  return ReadOpen(OpenRegular(path, O_RDONLY), limit);
}

std::optional<Bytes> PosixFiles::ReadPipe(const std::string& path, std::size_t limit) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || !S_ISFIFO(status.st_mode)) return std::nullopt;
  return ReadOpen(Descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)), limit);
}

bool PosixFiles::Replace(const std::string& path, BytesView content) {
  if (path.empty() || !IsPath(path)) return false;
  const std::optional<fs::path> target = WithoutLinks(path);
  if (!target) return false;
  struct stat status {};
  const bool exists = stat(target->c_str(), &status) == 0;
  // A rename checks only the rights of the folder, so the file's own protection is checked here.
  if (exists && (!S_ISREG(status.st_mode) || access(target->c_str(), W_OK) != 0)) return false;
  const int error = ReplaceByNewFile(*target, exists ? &status : nullptr, content);
  if (error == 0) return true;
  if (!exists || !IsRefusal(error)) return false;
  // The folder takes no new file, or its file system cannot give one the rights of the old one.
  const std::optional<Bytes> before = Read(*target, kNoLimit);
  const Descriptor file = OpenRegular(*target, O_WRONLY);
  if (!file.Valid()) return false;
  const bool written = Overwrite(file, content);
  if (!written && before) Overwrite(file, *before);
  return written;
}

bool PosixFiles::SameFile(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return IsPath(one) && IsPath(other) && stat(one.c_str(), &first) == 0 &&
         stat(other.c_str(), &second) == 0 && first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

bool PosixFiles::Exists(const std::string& path) {
  struct stat status {};
  return IsPath(path) && lstat(path.c_str(), &status) == 0;
}

std::unique_ptr<AppendFile> PosixFiles::OpenForAppending(const std::string& path) {
  return AppendTo(OpenRegular(path, O_WRONLY | O_APPEND | O_CREAT), true);
}

std::unique_ptr<AppendFile> PosixFiles::MakeLog(const std::string& path) {
  return AppendTo(OpenRegular(path, O_WRONLY | O_APPEND | O_CREAT | O_EXCL), false);
}

std::optional<std::uintmax_t> PosixFiles::SizeOf(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path, error);  // fails on a folder and on a device
  return error || !IsPath(path) ? std::nullopt : std::optional(size);
}

bool PosixFiles::Remove(const std::string& path) {
  return IsPath(path) && unlink(path.c_str()) == 0;
}

}  // namespace ox
