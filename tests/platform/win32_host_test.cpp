// What Windows alone can do to the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

#include "platform/console_events.h"
#include "platform/win32/shutdown_guard.h"
#include "platform/win32/wildcards.h"
#include "platform/win32/win32_end_requests.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_keep_awake.h"
#include "platform/win32/windows_api.h"
#include "support/scratch_folder.h"

namespace ox {
namespace {

using Names = std::vector<std::string>;

class Win32FilesTest : public testing::Test {
 protected:
  ScratchFolder scratch_;
  Win32Files files_;
};

TEST_F(Win32FilesTest, ADeviceIsNoFileUnderWhateverName) {
  const Names before = files_.FilesIn(files_.WorkingFolder()).value();
  for (const char* path :
       {"NUL", "con", "COM1", "aux.txt", ".\\PRN", "\\\\.\\COM1", "\\\\.\\pipe\\x", "x\xFF"}) {
    EXPECT_EQ(files_.Read(path), std::nullopt) << path;
    EXPECT_FALSE(files_.Replace(path, "x") || files_.Remove(path) || files_.SameFile(path, path)) << path;
    EXPECT_FALSE(files_.OpenForAppending(path) || files_.MakeLog(path)) << path;
  }
  EXPECT_EQ(files_.FilesIn(files_.WorkingFolder()), before);
}

TEST_F(Win32FilesTest, AFileKeepsItsMarksAndWhoHasItOpenDecides) {
  // How somebody else has the file open, its marks, and whether it is replaced.
  constexpr DWORD kNone = FILE_ATTRIBUTE_NORMAL;
  constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const std::tuple<DWORD, DWORD, bool> rows[] = {{kAll, kNone, true},
                                                 {kAll, FILE_ATTRIBUTE_HIDDEN, true},
                                                 {FILE_SHARE_READ | FILE_SHARE_WRITE, kNone, true},
                                                 {FILE_SHARE_READ, kNone, false},
                                                 {0, kNone, false},
                                                 {kAll, FILE_ATTRIBUTE_READONLY, false}};
  for (const auto& [share, marks, replaced] : rows) {
    WriteFile("file", "an old content");
    SetFileAttributesW(L"file", marks);
    {
      const Handle other(CreateFileW(L"file", GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr));
      EXPECT_EQ(files_.Replace("file", "new"), replaced) << share << " " << marks;
    }
    EXPECT_EQ(ReadFile("file"), replaced ? "new" : "an old content") << share << " " << marks;
    EXPECT_EQ(GetFileAttributesW(L"file") & ~FILE_ATTRIBUTE_ARCHIVE & ~kNone, marks & ~kNone) << share;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator("."), {}), 1) << "left something behind";
    SetFileAttributesW(L"file", kNone);
  }
}

TEST_F(Win32FilesTest, WhatKilledProgramsLeftIsCleared) {
  const std::string own = std::to_string(GetCurrentProcessId());
  for (const std::string& name : Names{".ox-4294967291-0.tmp", ".ox-" + own + "-0.tmp"}) WriteFile(name, "");
  EXPECT_TRUE(files_.Replace("file", "new"));
  EXPECT_FALSE(std::filesystem::exists(".ox-4294967291-0.tmp"));
  EXPECT_TRUE(std::filesystem::exists(".ox-" + own + "-0.tmp"));
}

TEST_F(Win32FilesTest, ListsWhatUsersSeeInTheOrderOfTheHost) {
  for (const char* name : {"b", "A", "c.mes"}) WriteFile(name, "");
  WriteFile("hidden", "");
  SetFileAttributesW(L"hidden", FILE_ATTRIBUTE_HIDDEN);
  EXPECT_EQ(files_.FilesIn(files_.WorkingFolder()), (Names{"A", "b", "c.mes"}));
  using Words = std::vector<std::wstring>;
  EXPECT_EQ(FilesFitting(L"*"), (Words{L"A", L"b", L"c.mes"}));
  EXPECT_EQ(FilesFitting(L".\\?.m*"), Words{L".\\c.mes"});
  for (const wchar_t* word : {L"c.mes", L"*.par", L"Q:\\*", L"--count"})
    EXPECT_EQ(FilesFitting(word), Words{word});
  const Names drives = files_.Drives();
  EXPECT_NE(std::ranges::find(drives, files_.WorkingFolder().substr(0, 2)), drives.end());
  ASSERT_EQ(std::ranges::find(drives, "Q:"), drives.end());
  EXPECT_EQ(files_.FoldersIn("Q:\\"), std::nullopt);
}

TEST(Win32KeepAwakeTest, TheEndOfTheSessionIsRefusedDuringARun) {
  const auto guard = [] { return FindWindowW(ShutdownGuard::kWindowClass, nullptr); };
  Win32KeepAwake awake;
  for (int run = 0; run < 2; ++run) {
    const KeepAwake::Hold hold(awake);
    for (int looks = 0; looks < 500 && guard() == nullptr; ++looks) Sleep(10);
    ASSERT_NE(guard(), nullptr);
    EXPECT_EQ(SendMessageW(guard(), WM_QUERYENDSESSION, 0, 0), FALSE);
  }
  EXPECT_EQ(guard(), nullptr);
}

TEST(Win32EndRequestsTest, ARestNoticesARequestAndAClosedConsoleWaitsForTheEnd) {
  EXPECT_FALSE(Win32EndRequests::Request(CTRL_C_EVENT)) << "nobody has asked";
  OpenPorts ports;
  ConsoleEvents events(ports);
  for (const DWORD kind : {CTRL_C_EVENT, CTRL_BREAK_EVENT, CTRL_CLOSE_EVENT, CTRL_SHUTDOWN_EVENT}) {
    const Win32EndRequests requests;
    const bool& requested = events.Watch(requests.Handle());
    auto returned = std::make_shared<std::atomic<bool>>(false);
    std::thread([returned, kind] { *returned = Win32EndRequests::Request(kind); }).detach();
    for (int rests = 0; rests < 100 && !requested; ++rests) events.Rest();
    EXPECT_TRUE(requested);
    events.Rest();
    EXPECT_EQ(*returned, kind == CTRL_C_EVENT || kind == CTRL_BREAK_EVENT) << kind;
  }
}

}  // namespace
}  // namespace ox
