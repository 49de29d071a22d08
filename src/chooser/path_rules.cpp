// The rules for paths, one function each.
#include "chooser/path_rules.h"

#include <algorithm>
#include <cstddef>

namespace ox {
namespace {

constexpr std::size_t kDriveLength = 2;  // "C:"

bool BeginsWithDrive(std::string_view path, PathStyle style) {
  return style.driveLetters && path.size() >= kDriveLength && path[1] == ':';
}

/// Whether a path is the folder or lies below it.
bool LiesIn(std::string_view path, std::string_view folder, PathStyle style) {
  if (!path.starts_with(folder)) return false;
  return path.size() == folder.size() || folder.ends_with(style.separator) ||
         path[folder.size()] == style.separator;
}

}  // namespace

bool IsAbsolutePath(std::string_view path, PathStyle style) {
  return BeginsWithDrive(path, style) || path.starts_with(style.separator);
}

std::string WithExtension(std::string_view name, std::string_view pattern) {
  std::string whole(name);
  if (name.find('.') == std::string_view::npos && !pattern.empty()) whole += pattern.substr(1);
  return whole;
}

std::string JoinPath(std::string_view folder, std::string_view name, PathStyle style) {
  std::string path(folder);
  if (!folder.ends_with(style.separator)) path += style.separator;
  return path.append(name);
}

std::string DriveRoot(std::string_view drive, PathStyle style) {
  return style.driveLetters ? JoinPath(drive, "", style) : std::string(drive);
}

DriveAndFolder SplitFolder(std::string_view path, PathStyle style, const std::vector<std::string>& drives) {
  std::size_t length = BeginsWithDrive(path, style) ? kDriveLength : 0;
  if (!style.driveLetters) {
    for (const std::string& drive : drives) {
      if (LiesIn(path, drive, style)) length = std::max(length, drive.size());
    }
  }
  if (length == 0) return {};
  return {std::string(path.substr(0, length)), std::string(path.substr(length))};
}

std::vector<NamedFolder> WayTo(std::string_view folder, PathStyle style) {
  const std::size_t drive = BeginsWithDrive(folder, style) ? kDriveLength : 0;
  const std::string root = JoinPath(folder.substr(0, drive), "", style);
  std::vector<NamedFolder> way{{root, root}};
  for (std::size_t begin = drive; begin < folder.size();) {
    const std::size_t end = std::min(folder.find(style.separator, begin), folder.size());
    const std::string name(folder.substr(begin, end - begin));
    if (!name.empty()) way.push_back({name, JoinPath(way.back().path, name, style)});
    begin = end + 1;
  }
  return way;
}

}  // namespace ox
