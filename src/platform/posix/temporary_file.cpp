// Names, rights and the end of temporary files.
#include "platform/posix/temporary_file.h"

#include <fcntl.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "platform/posix/file_writing.h"
#include "platform/temporary_name.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFile = 0666;  // rights, before the user's mask
constexpr mode_t kRights = 07777;
constexpr int kMostNames = 16;  // to try, when an earlier process of our number left its files behind

bool IsDead(pid_t process) {
  return kill(process, 0) != 0 && errno == ESRCH;
}

}  // namespace

TemporaryFile::TemporaryFile(fs::path target) : target_(std::move(target)) {
  for (int number = 0; number < kMostNames && !made_; ++number) {
    path_ = target_.parent_path() / TemporaryName(static_cast<std::uint32_t>(getpid()), number);
    file_ = Descriptor(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFile));
    makingError_ = errno;
    made_ = file_.Valid();
  }
}

TemporaryFile::~TemporaryFile() {
  if (made_) unlink(path_.c_str());
}

bool TemporaryFile::Write(BytesView content) {
  if (made_) return WriteAll(file_, content);
  errno = makingError_;
  return false;
}

bool TemporaryFile::TakeRightsOf(const struct stat& replaced) {
  struct stat own {};
  if (fstat(file_.Number(), &own) != 0) return false;
  // Owner and rights are changed only where they differ, since some file systems know neither. The group can
  // often be changed where the owner cannot.
  const bool sameOwner = own.st_uid == replaced.st_uid && own.st_gid == replaced.st_gid;
  if (!sameOwner && fchown(file_.Number(), replaced.st_uid, replaced.st_gid) != 0 &&
      fchown(file_.Number(), own.st_uid, replaced.st_gid) != 0 && !IsRefusal(errno)) {
    return false;
  }
  const bool sameRights = ((own.st_mode ^ replaced.st_mode) & kRights) == 0;
  return sameRights || fchmod(file_.Number(), replaced.st_mode & kRights) == 0;
}

bool TemporaryFile::MoveIntoPlace() {
  if (!HandToDisk(file_) || !file_.Close()) return false;
  if (std::rename(path_.c_str(), target_.c_str()) != 0) return false;
  made_ = false;
  return true;
}

void TemporaryFile::RemoveLeftovers(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? "." : folder, error);
       !error && entry != fs::directory_iterator(); entry.increment(error)) {
    const auto maker = static_cast<pid_t>(MakerOf(entry->path().filename().native()));
    if (maker > 0 && IsDead(maker)) unlink(entry->path().c_str());
  }
}

}  // namespace ox
