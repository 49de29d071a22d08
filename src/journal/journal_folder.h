// The folder of the support logs, and how many of them are kept.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"

namespace ox {

/// In the working folder. Where it is missing, no log is kept.
constexpr char kJournalFolder[] = "Protokoll";

/// A log that has grown to so many bytes goes on in a new file.
constexpr std::uintmax_t kLargestJournal = 16'777'216;
/// Before a new file is made, the oldest go until there are no more files and bytes than these, the new
/// file counted with its largest size.
constexpr std::size_t kMostJournals = 100;
constexpr std::uintmax_t kMostJournalBytes = 67'108'864;

/// A new file in the folder.
struct NewJournal {
  std::unique_ptr<AppendFile> file;  // null when there is none
  std::string name;                  // of the file, with the folder
  std::string trouble;               // why there is none; German, empty where none is wanted
};

/// Makes a file that is named after the time, "2026-11-23_11-45-02.log" or, when that is there already, the
/// same with "_2" and so on, and removes old ones. Files with other names are left alone and not counted.
NewJournal MakeJournal(Files& files, const CivilTime& now);

/// "2026-11-23 11:45:02", with these characters between date, hour, minute and second.
std::string TimeText(const CivilTime& time, char betweenDateAndTime, char betweenTimes);

}  // namespace ox
