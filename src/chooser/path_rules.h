// How paths are put together and taken apart, in both styles: "\" with drive letters, and "/" without.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/files.h"

namespace ox {

/// Whether a typed name stands for itself, whatever folder is listed: it begins with the separator or, where
/// drives have letters, with a drive ("C:").
bool IsAbsolutePath(std::string_view path, PathStyle style);

/// A name without any "." gets the end of the pattern, all but its first character: "netz" and "*.mes" give
/// "netz.mes". Any other name, or an empty pattern, leaves the name as it is.
std::string WithExtension(std::string_view name, std::string_view pattern);

/// Folder and name with exactly one separator between them, where the folder itself may end with one.
std::string JoinPath(std::string_view folder, std::string_view name, PathStyle style);

/// The folder that a drive begins with: "C:\" of "C:", and without drive letters the drive itself.
std::string DriveRoot(std::string_view drive, PathStyle style);

/// A folder's full path in two pieces; the drive followed by the folder is the path.
struct DriveAndFolder {
  std::string drive;   // "C:", or "/mnt/stick"
  std::string folder;  // "\Tabellen", or "/tabellen"
};

/// Both empty when the path lies on no drive. Without drive letters the innermost of `drives` counts.
DriveAndFolder SplitFolder(std::string_view path, PathStyle style, const std::vector<std::string>& drives);

/// A folder as a line of the folder list names it.
struct NamedFolder {
  std::string name;
  std::string path;
};

/// The folders on the way from the root ("C:\", "/") down to a folder, that one included.
std::vector<NamedFolder> WayTo(std::string_view folder, PathStyle style);

}  // namespace ox
