// Making room for a new file, and making it.
#include "journal/journal_folder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace ox {
namespace {

constexpr std::string_view kExtension = ".log";
constexpr std::string_view kNamePattern = "0000-00-00_00-00-00";  // a digit for each 0
constexpr int kMostInASecond = 99;                                // logs

constexpr char kNoFolder[] = "Es wird kein Protokoll geführt: \"Protokoll\" ist kein Ordner.";
constexpr char kNotMade[] =
    "Es wird kein Protokoll geführt: Im Ordner \"Protokoll\" lässt sich keine Datei anlegen.";

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

/// The number 1 has no digits in the name.
std::string LogName(std::string_view time, int number) {
  return std::string(time) + (number == 1 ? "" : "_" + std::to_string(number)) + std::string(kExtension);
}

/// The number of a log among those of its second; nothing when no log is named like that.
std::optional<int> NumberOf(std::string_view name) {
  const std::string_view time = name.substr(0, kNamePattern.size());
  const bool isTime = std::ranges::equal(time, kNamePattern, [](char character, char pattern) {
    return pattern == '0' ? IsDigit(character) : pattern == character;
  });
  if (!isTime) return std::nullopt;
  for (int number = 1; number <= kMostInASecond; ++number) {
    if (name == LogName(time, number)) return number;
  }
  return std::nullopt;
}

/// The logs among the names, the youngest first.
std::vector<std::string> LogsIn(const std::vector<std::string>& names) {
  std::vector<std::pair<std::string_view, int>> logs;
  for (const std::string_view name : names) {
    if (const auto number = NumberOf(name)) logs.emplace_back(name.substr(0, kNamePattern.size()), *number);
  }
  std::ranges::sort(logs, std::greater());
  std::vector<std::string> sorted;
  sorted.reserve(logs.size());
  for (const auto& [time, number] : logs) sorted.push_back(LogName(time, number));
  return sorted;
}

/// Removes the oldest logs. One that its user has given another name is his.
void MakeRoom(Files& files, const std::string& folder, const std::vector<std::string>& names) {
  std::size_t count = 1;
  std::uintmax_t bytes = kLargestJournal;
  for (const std::string& log : LogsIn(names)) {
    ++count;
    bytes += files.SizeOf(folder + log).value_or(0);
    if (count > kMostJournals || bytes > kMostJournalBytes) files.Remove(folder + log);
  }
}

bool Contains(const std::optional<std::vector<std::string>>& names, const std::string& name) {
  return names && std::find(names->begin(), names->end(), name) != names->end();
}

}  // namespace

std::string TimeText(const CivilTime& time, char betweenDateAndTime, char betweenTimes) {
  constexpr std::size_t kRoom = 80;  // for any six numbers
  std::array<char, kRoom> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d%c%02d%c%02d%c%02d", time.year, time.month, time.day,
                betweenDateAndTime, time.hour, betweenTimes, time.minute, betweenTimes, time.second);
  return text.data();
}

NewJournal MakeJournal(Files& files, const CivilTime& now) {
  const std::string workingFolder = files.WorkingFolder();
  const char separator = files.Style().separator;
  const std::string path =
      (workingFolder.ends_with(separator) ? workingFolder : workingFolder + separator) + kJournalFolder;
  if (!Contains(files.FoldersIn(workingFolder), kJournalFolder))
    return {nullptr, {}, files.Exists(path) ? kNoFolder : ""};
  const std::string folder = path + separator;
  const auto names = files.FilesIn(path);
  if (!names) return {nullptr, {}, kNotMade};
  MakeRoom(files, folder, *names);
  const std::string stem = TimeText(now, '_', '-');
  for (int number = 1; number <= kMostInASecond; ++number) {
    const std::string name = LogName(stem, number);
    if (Contains(names, name)) continue;
    auto file = files.MakeLog(folder + name);
    // Another start of the same second may have been quicker.
    if (file == nullptr && files.Exists(folder + name)) continue;
    if (file == nullptr) return {nullptr, {}, kNotMade};
    return {std::move(file), folder + name, {}};
  }
  return {nullptr, {}, kNotMade};
}

}  // namespace ox
