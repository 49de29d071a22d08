// Making room for a new file, and making it.
#include "journal/journal_folder.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <vector>

namespace ox {
namespace {

constexpr std::string_view kExtension = ".log";
constexpr std::string_view kNamePattern = "0000-00-00_00-00-00";  // a digit for each 0
constexpr int kMostInASecond = 99;

constexpr char kNoFolder[] = "Es wird kein Protokoll geführt: \"Protokoll\" ist kein Ordner.";
constexpr char kNotMade[] =
    "Es wird kein Protokoll geführt: Im Ordner \"Protokoll\" lässt sich keine Datei anlegen.";

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Whether a log has such a name.
bool IsJournal(std::string_view name) {
  if (!name.ends_with(kExtension) || name.size() < kNamePattern.size() + kExtension.size()) return false;
  return std::equal(kNamePattern.begin(), kNamePattern.end(), name.begin(), [](char pattern, char character) {
    return pattern == '0' ? IsDigit(character) : pattern == character;
  });
}

/// Removes the oldest logs; `names` are those in the folder, sorted, and so by their time.
void MakeRoom(Files& files, const std::string& folder, const std::vector<std::string>& names) {
  std::size_t count = 1;
  std::uintmax_t bytes = kLargestJournal;
  for (auto name = names.rbegin(); name != names.rend(); ++name) {
    if (!IsJournal(*name)) continue;
    ++count;
    bytes += files.SizeOf(folder + *name).value_or(0);
    if (count > kMostJournals || bytes > kMostJournalBytes) files.Remove(folder + *name);
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
    return {nullptr, {}, files.SizeOf(path) ? kNoFolder : ""};
  const std::string folder = path + separator;
  const auto names = files.FilesIn(path);
  if (!names) return {nullptr, {}, kNotMade};
  MakeRoom(files, folder, *names);
  const std::string stem = TimeText(now, '_', '-');
  for (int number = 1; number <= kMostInASecond; ++number) {
    const std::string name =
        stem + (number == 1 ? "" : "_" + std::to_string(number)) + std::string(kExtension);
    if (Contains(names, name)) continue;
    auto file = files.MakeLog(folder + name);
    // Another start of the same second may have been quicker.
    if (file == nullptr && files.SizeOf(folder + name)) continue;
    if (file == nullptr) return {nullptr, {}, kNotMade};
    return {std::move(file), folder + name, {}};
  }
  return {nullptr, {}, kNotMade};
}

}  // namespace ox
