// Files and folders on the real disk.
#include "platform/posix/posix_files.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <mntent.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <map>

#include "platform/posix/descriptor.h"
#include "platform/standard_streams.h"
#include "platform/temporary_name.h"
#include "support/scratch_folder.h"

namespace {

/// The host's calls that fail from now on, with their errors; 0 for one that succeeds and does nothing.
std::map<std::string, int> failing;
/// Where the host's table of mounted volumes stands.
std::string mounts = "/proc/self/mounts";

template <typename Result = int, typename... Arguments>
Result Call(const char* name, Arguments... arguments) {
  if (failing.contains(name)) return (errno = failing[name]) != 0 ? -1 : 0;
  return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

}  // namespace

extern "C" {
int fchown(int file, uid_t user, gid_t group) {
  return Call("fchown", file, user, group);
}
int fchmod(int file, mode_t mode) {
  return Call("fchmod", file, mode);
}
int fsync(int file) {
  return Call("fsync", file);
}
int rename(const char* from, const char* to) {
  return Call("rename", from, to);
}
ssize_t write(int file, const void* bytes, size_t count) {
  return Call<ssize_t>("write", file, bytes, count);
}
FILE* setmntent(const char* file, const char* mode) {
  return fopen(file == std::string_view("/proc/self/mounts") ? mounts.c_str() : file, mode);
}
}

namespace ox {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class PosixFilesTest : public testing::Test {
 protected:
  ~PosixFilesTest() override { failing.clear(); }

  ScratchFolder scratch_;
  PosixFiles files_;
};

TEST_F(PosixFilesTest, ReadsAFileUpToTheLimitAndNoPipe) {
  Bytes content;
  for (int number = 0; number < 20000; ++number) content += std::to_string(number) + '\0';
  WriteFile("big", content);
  for (const std::size_t limit : {std::size_t{0}, std::size_t{65537}, Files::kNoLimit})
    EXPECT_TRUE(files_.Read("big", limit) == content.substr(0, limit)) << limit;
  EXPECT_LT(files_.Read("big")->capacity(), content.size() + 100'000);
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  EXPECT_FALSE(files_.Read("pipe") || files_.Replace("pipe", "new") || files_.OpenForAppending("pipe"));
  EXPECT_FALSE(files_.Read("missing") || files_.ReadPipe("big", 9));
}

TEST_F(PosixFilesTest, ReplacesAFileWholeAndKeepsItsRightsAndAppendsToIt) {
  fs::create_directory("real");
  WriteFile("real/target", "old");
  fs::permissions("real/target", fs::perms(0640));
  fs::create_symlink("real/target", "link");
  std::ifstream reader("link");
  fs::create_hard_link("real/target", "second name");
  WriteFile("twin", "old");
  for (const char* other : {"link", "second name", "./real/target"})
    EXPECT_TRUE(files_.SameFile("real/target", other) && files_.Exists(other)) << other;
  for (const char* other : {"twin", "missing", ""}) EXPECT_FALSE(files_.SameFile(other, "link")) << other;
  fs::create_symlink("missing", "nowhere");
  fs::create_symlink("round", "round");
  EXPECT_TRUE(files_.Exists("nowhere") && !files_.Exists("missing") && !files_.Replace("round", "new"));
  EXPECT_TRUE(files_.Replace("link", Bytes("new\0\r\n", 6)));
  EXPECT_EQ(reader.get(), 'o') << "a reader sees the old or the new content only";
  EXPECT_EQ(fs::status("real/target").permissions(), fs::perms(0640));
  EXPECT_TRUE(files_.OpenForAppending("link")->Append("more"));
  EXPECT_EQ(ReadFile("real/target"), Bytes("new\0\r\nmore", 10));
}

TEST_F(PosixFilesTest, WhatTheFileSystemCannotDoIsAFailureOnlyWhereItMatters) {
  WriteFile("new", "");
  const fs::perms usual = fs::status("new").permissions();
  const uid_t user = geteuid() == 0 ? 1 : geteuid();  // nobody else may give a file away
  const gid_t group = geteuid() == 0 ? 1 : getegid();
  // The call, its error, the rights of the file and what is left in it.
  const std::tuple<std::string, int, fs::perms, std::string> rows[] = {
      {"fchown", EPERM, usual, "new"},
      {"fchown", EIO, usual, group == getegid() ? "new" : "old one"},
      {"fchmod", EIO, usual, "new"},
      {"fchmod", EPERM, fs::perms(0640), "new"},
      {"fsync", EINVAL, usual, "new"},
      {"fsync", ENOSYS, usual, "new"},
      {"fchmod", EIO, fs::perms(0640), "old one"},
      {"rename", EBUSY, usual, "new"},
      {"write", ENOSPC, usual, "old one"},
      {"write", 0, usual, "old one"},
      {"fsync", EIO, usual, "old one"},
      {"fsync", ENOSPC, usual, "old one"},
      {"rename", EIO, usual, "old one"}};
  int logs = 0;
  for (const auto& [call, error, rights, left] : rows) {
    failing.clear();
    WriteFile("file", "old one");
    fs::permissions("file", rights);
    ASSERT_EQ(chown("file", user, group), 0);
    failing[call] = error;
    EXPECT_EQ(files_.Replace("file", "new"), left == "new") << call << error;
    EXPECT_EQ(ReadFile("file"), left) << call << error;
    EXPECT_EQ(fs::status("file").permissions(), rights) << call << error;
    struct stat status {};
    EXPECT_TRUE(stat("file", &status) == 0 &&
                ((status.st_uid == user && status.st_gid == group) || error == EPERM))
        << call << error;
    EXPECT_EQ(files_.MakeLog("log" + std::to_string(++logs))->Append("x"), call != "write")
        << "a log does not wait for the disk";
    const bool appended = files_.OpenForAppending("log")->Append("x");
    EXPECT_EQ(appended, (call != "fsync" && call != "write") || left == "new") << call << error;
    EXPECT_EQ(fs::status("log").permissions(), usual);
    EXPECT_EQ(files_.Replace("log", "x"), call.starts_with("fch") || left == "new")
        << "it has its owner and rights";
  }
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 3 + logs) << "left something behind";
}

TEST_F(PosixFilesTest, AFileInAFolderThatIsNotWritableIsWrittenInPlaceOrStaysAsItWas) {
  constexpr uid_t kNobody = 65534;
  fs::create_directory("folder");
  WriteFile("folder/file", "old one");
  WriteFile("folder/locked", "old one");
  fs::permissions("folder/file", fs::perms(0666));
  fs::permissions("folder/locked", fs::perms(0444));
  fs::permissions("folder", fs::perms(0555));
  ASSERT_EQ(seteuid(geteuid() == 0 ? kNobody : geteuid()), 0);
  EXPECT_TRUE(files_.Replace("folder/file", "new"));
  EXPECT_EQ(ReadFile("folder/file"), "new");
  failing["fsync"] = EIO;
  EXPECT_FALSE(files_.Replace("folder/file", "newer one"));
  EXPECT_EQ(ReadFile("folder/file"), "new");
  EXPECT_FALSE(files_.Replace("folder/other", "new") || files_.Replace("folder/locked", "new"));
  ASSERT_EQ(seteuid(getuid()), 0);
  fs::permissions("folder", fs::perms(0755));
}

TEST_F(PosixFilesTest, WhatKilledProgramsLeftIsCleared) {
  const pid_t dead = fork();
  if (dead == 0) _exit(0);
  waitpid(dead, nullptr, 0);
  const std::string left = TemporaryName(static_cast<std::uint32_t>(dead), 0), number = std::to_string(dead);
  Names others = {TemporaryName(1, 0),
                  ".ox--1-0.tmp",
                  left + "x",
                  "x" + left,
                  ".ox-" + number + "+0.tmp",
                  ".ox-" + std::to_string(dead + (1LL << 32)) + "-0.tmp"};
  for (int own = 0; own < 9; ++own)
    others.push_back(TemporaryName(static_cast<std::uint32_t>(getpid()), own));
  for (const std::string& name : others) WriteFile(name, "");
  WriteFile(left, "");
  WriteFile(TemporaryName(static_cast<std::uint32_t>(dead), 1), "");
  EXPECT_TRUE(files_.Replace("file", "new"));
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), std::ssize(others) + 1);
  for (const std::string& name : others) EXPECT_TRUE(fs::exists(name)) << name;
  EXPECT_EQ(MakerOf(others[0]), 1U);
}

TEST_F(PosixFilesTest, AProgramStartedWithoutItsStreamsOpensNothingInTheirPlace) {
  for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
    const Descriptor input(dup(STDIN_FILENO)), kept(dup(stream));
    const int next = Descriptor(dup(stream)).Number();
    close(STDIN_FILENO), close(stream);
    const StandardStreams streams;
    EXPECT_EQ(Descriptor(open(".", O_RDONLY)).Number(), next);
    dup2(input.Number(), STDIN_FILENO), dup2(kept.Number(), stream);
  }
}

TEST_F(PosixFilesTest, ListsDrivesFoldersAndFiles) {
  for (const char* name : {"b", "a", ".hidden"}) fs::create_directory(name);
  for (const char* name : {"z.mes", "\xC3\xA4.mes", "M.par", ".secret", "bad\xFFname"}) WriteFile(name, "");
  fs::create_symlink("a", "to a");
  const std::string here = files_.WorkingFolder();
  EXPECT_EQ(files_.FoldersIn(here), (Names{"a", "b", "to a"}));
  EXPECT_EQ(files_.FilesIn(here), (Names{"M.par", "z.mes", "\xC3\xA4.mes"}));
  EXPECT_FALSE(files_.FoldersIn("missing") || files_.FilesIn("z.mes") || files_.Style().driveLetters);
  std::string table = "proc /proc proc rw 0 0\n/dev/loop0 " + here + "/b squashfs ro 0 0\n/dev/sdb1 " + here +
                      "/a vfat rw 0 0\n/dev/sdc " + here + "/z.mes ext4 rw 0 0\nnas:/y /\xFF nfs rw 0 0\n";
  for (const char* type : {"nfs", "nfs", "nfs4", "cifs", "smb3", "9p", "vboxsf", "fuse.sshfs"})
    table.append("nas:/x /").append(type).append(" ").append(type).append(" rw 0 0\n");
  WriteFile("table", table);
  mounts = here + "/table";
  Names drives = {"/", "/9p", "/cifs", "/fuse.sshfs", "/nfs", "/nfs4", "/smb3", "/vboxsf", here + "/a"};
  std::ranges::sort(drives);
  EXPECT_EQ(files_.Drives(), drives);
}

}  // namespace
}  // namespace ox
