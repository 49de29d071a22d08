// Files as a command reads and writes them: what fails is said.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/bytes.h"
#include "tool/console.h"

namespace ox::tool {

/// The content of a file of at most `limit` bytes. Nothing when it cannot be read or is larger: the user has
/// been told then.
std::optional<Bytes> ReadInput(const Console& console, const std::string& path, std::size_t limit);

/// Writes a file in the place of what was there; kFailed, with the user told and the file as it was, when
/// that is not possible, or when it is one of those that were read.
ExitStatus WriteOutput(const Console& console, const std::string& path, BytesView content,
                       const std::vector<std::string>& read);

}  // namespace ox::tool
