// What every host promises beside its ports, tried on the one that this program is built for.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <ctime>

#include "platform/seeded_random.h"
#include "support/scratch_folder.h"
#include "this_host/this_host.h"

namespace ox {
namespace {

using Names = std::vector<std::string>;

class HostFilesTest : public testing::Test {
 protected:
  std::string Full(const std::string& name) {
    return files_.WorkingFolder() + files_.Style().separator + name;
  }

  ScratchFolder scratch_;
  decltype(ThisHost::files) files_;
};

TEST_F(HostFilesTest, KeepAFileUnderAnyNameUntilItIsRemoved) {
  const std::string folder(100, 'd');
  std::filesystem::create_directory(folder);
  const std::string deep = folder + files_.Style().separator + std::string(200, 'f');
  const Bytes content("\0\r\n\x1A\xFF", 5);
  for (const std::string& name : Names{"x.mes", "Stationen Süd.mes", "漢 \U0001F600.txt", deep}) {
    EXPECT_EQ(files_.SizeOf(name), std::nullopt) << name;
    EXPECT_TRUE(files_.Replace(name, "an older content") && files_.Replace(name, content)) << name;
    EXPECT_EQ(files_.Read(Full(name)), content) << name;
    EXPECT_EQ(files_.Read(name, 2), content.substr(0, 2));
    EXPECT_TRUE(files_.SameFile(name, Full(name)));
    EXPECT_TRUE(files_.OpenForAppending(Full(name))->Append("more"));
    EXPECT_EQ(files_.SizeOf(name), content.size() + 4);
    EXPECT_EQ(files_.MakeLog(name), nullptr) << "there is something already";
    const std::string where = name == deep ? Full(folder) : files_.WorkingFolder();
    const std::string listed = name == deep ? name.substr(folder.size() + 1) : name;
    EXPECT_EQ(std::ranges::count(files_.FilesIn(where).value(), listed), 1) << name;
    EXPECT_TRUE(files_.Remove(Full(name)));
    const auto log = files_.MakeLog(name);
    EXPECT_TRUE(log->Append("one") && log->Append("two"));
    EXPECT_EQ(files_.Read(name), "onetwo") << "read by others while it grows";
  }
}

TEST_F(HostFilesTest, RefuseWhatIsNoFile) {
  std::filesystem::create_directory("folder");
  WriteFile("file", "old");
  for (const std::string& path :
       Names{"folder", "file/below", "nowhere/file", "", "folder/", std::string("file\0x", 6)}) {
    EXPECT_EQ(files_.Read(path), std::nullopt) << path;
    EXPECT_FALSE(files_.Replace(path, "new")) << path;
    EXPECT_FALSE(files_.Remove(path) || (files_.Exists(path) && path.find("folder") != 0)) << path;
    EXPECT_EQ(files_.OpenForAppending(path), nullptr) << path;
    EXPECT_EQ(files_.SizeOf(path), std::nullopt) << path;
  }
  EXPECT_TRUE(files_.SameFile("folder", Full("folder")));
  EXPECT_TRUE(files_.Exists("folder") && files_.Exists(Full("file")));
  EXPECT_FALSE(files_.SameFile("folder", "file") || files_.SameFile("none", "none"));
  EXPECT_EQ(files_.FoldersIn(files_.WorkingFolder()), Names{"folder"});
  EXPECT_EQ(files_.FilesIn(Full("folder")), Names{});
  EXPECT_FALSE(files_.FoldersIn("none") || files_.FilesIn("file"));
  EXPECT_EQ(ReadFile("file"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 2) << "left something behind";
}

TEST(HostClock, TellsTheTimeOfTheHostAndRuns) {
  decltype(ThisHost::clock) clock;
  using std::chrono::system_clock;
  const std::time_t before = std::time(nullptr);  // up to a tick late: no measure for the end
  const CivilTime now = clock.Now();
  const std::time_t after = system_clock::to_time_t(system_clock::now());
  std::tm told{};
  told.tm_year = now.year - 1900, told.tm_mon = now.month - 1, told.tm_mday = now.day;
  told.tm_hour = now.hour, told.tm_min = now.minute, told.tm_sec = now.second, told.tm_isdst = -1;
  const std::time_t seen = std::mktime(&told);
  EXPECT_TRUE(before <= seen && seen <= after) << before << " " << seen << " " << after;
  const Seconds ofDay = static_cast<Seconds>((now.hour * 60 + now.minute) * 60 + now.second);
  EXPECT_LT(std::fmod(clock.SecondsSinceMidnight() - ofDay + 86400, 86400), 2);
  std::int64_t finest = 1000, last = clock.Milliseconds();
  for (int steps = 0; steps < 100 && finest > 5; ++steps) {  // a busy PC makes some of them long
    std::int64_t next = last;
    while (next == last) next = clock.Milliseconds();
    ASSERT_GT(next, last);
    finest = std::min(finest, next - last);
    last = next;
  }
  EXPECT_LE(finest, 5) << "no coarser than the waits that it times";
}

TEST(HostRandom, IsAnotherOneInEachRun) {
  decltype(ThisHost::random) first, second;
  EXPECT_NE(first.Next(), second.Next());
  EXPECT_EQ(SeededRandom(5489).Next(), 0.7868209548678019) << "a fraction";
}

}  // namespace
}  // namespace ox
