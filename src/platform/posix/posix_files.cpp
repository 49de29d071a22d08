// Reading, replacing and appending to files of this host.
#include "platform/posix/posix_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "platform/posix/descriptor.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kReadSize = 65536;  // bytes
constexpr mode_t kNewFile = 0666;         // rights, before the user's mask
constexpr mode_t kRights = 07777;
constexpr int kMostLinks = 40;           // as the host itself
constexpr int kMostTemporaryFiles = 16;  // names to try, when earlier runs left theirs behind

/// Opens a regular file; a device or a pipe is not even touched. `flags` may make the file.
Descriptor OpenRegular(const std::string& path, int flags) {
  if (path.find('\0') != std::string::npos) return Descriptor();
  struct stat status {};
  if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return Descriptor();
  return Descriptor(open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFile));
}

bool WriteAll(const Descriptor& file, BytesView bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file.Number(), bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
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

/// A file beside another one that takes its place when it is complete, and vanishes when that does not
/// happen.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target) : target_(target) {
    for (int number = 0; number < kMostTemporaryFiles && !file_.Valid(); ++number) {
      path_ =
          target.parent_path() / (".ox-" + std::to_string(getpid()) + "-" + std::to_string(number) + ".tmp");
      file_ = Descriptor(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile));
    }
    made_ = file_.Valid();
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (made_) unlink(path_.c_str());
  }

  bool Write(BytesView content) { return made_ && WriteAll(file_, content); }

  /// Gives the file the owner, as far as we may, and the rights of the one that it replaces.
  bool TakeRightsOf(const struct stat& status) {
    if (fchown(file_.Number(), status.st_uid, status.st_gid) != 0 && errno != EPERM) return false;
    return fchmod(file_.Number(), status.st_mode & kRights) == 0;
  }

  bool MoveIntoPlace() {
    if (fsync(file_.Number()) != 0 || !file_.Close()) return false;
    if (std::rename(path_.c_str(), target_.c_str()) != 0) return false;
    made_ = false;
    return true;
  }

 private:
  fs::path target_;
  fs::path path_;
  Descriptor file_;
  bool made_ = false;
};

class PosixAppendFile : public AppendFile {
 public:
  explicit PosixAppendFile(Descriptor file) : file_(std::move(file)) {}

  bool Append(BytesView bytes) override { return WriteAll(file_, bytes) && fdatasync(file_.Number()) == 0; }

 private:
  Descriptor file_;
};

}  // namespace

std::optional<Bytes> PosixFiles::Read(const std::string& path, std::size_t limit) {
  const Descriptor file = OpenRegular(path, O_RDONLY);
  if (!file.Valid()) return std::nullopt;
  Bytes content;
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

bool PosixFiles::Replace(const std::string& path, BytesView content) {
  if (path.empty() || path.find('\0') != std::string::npos) return false;
  const std::optional<fs::path> target = WithoutLinks(path);
  if (!target) return false;
  struct stat status {};
  const bool exists = stat(target->c_str(), &status) == 0;
  // A rename asks only the folder, so the file's own protection is heeded here.
  if (exists && (!S_ISREG(status.st_mode) || access(target->c_str(), W_OK) != 0)) return false;
  TemporaryFile file(*target);
  return file.Write(content) && (!exists || file.TakeRightsOf(status)) && file.MoveIntoPlace();
}

bool PosixFiles::SameFile(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  return stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 &&
         first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

std::unique_ptr<AppendFile> PosixFiles::OpenForAppending(const std::string& path) {
  Descriptor file = OpenRegular(path, O_WRONLY | O_APPEND | O_CREAT);
  if (!file.Valid()) return nullptr;
  return std::make_unique<PosixAppendFile>(std::move(file));
}

}  // namespace ox
