// Files as a command reads and writes them: what fails is said.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/bytes.h"
#include "tool/console.h"

namespace ox::tool {

/// Of a file, or of what a pipe brings up to its end: the content, cut off after `limit` bytes. Nothing when
/// it cannot be read.
std::optional<Bytes> ReadFileOrPipe(Files& files, const std::string& path, std::size_t limit);

struct Input {
  std::optional<Bytes> content;
  std::string fault;  ///< why there is none, such as "nicht gefunden"
};

/// Reads a file or a pipe of at most `limit` bytes. When that fails or there is more, the user is told.
Input ReadInput(const Console& console, const std::string& path, std::size_t limit);

/// Writes a file in the place of what was there; kFailed, with the user told and the file as it was, when
/// that is not possible, or when it is one of those that were read.
ExitStatus WriteOutput(const Console& console, const std::string& path, BytesView content,
                       const std::vector<std::string>& read);

}  // namespace ox::tool
