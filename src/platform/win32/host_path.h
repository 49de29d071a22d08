// Paths as the host's calls take them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ox {

/// The full path, of any length (with the host's mark for that in front); nothing for what names no file or
/// folder: an empty path, one with a zero character or broken UTF-8, a device ("NUL", "COM1.txt", a pipe).
std::optional<std::wstring> HostPath(const std::string& path);

/// The folder in which a full path lies, with its separator at the end.
std::wstring FolderOf(std::wstring_view path);

}  // namespace ox
