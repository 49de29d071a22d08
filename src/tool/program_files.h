// Program files as commands read them.
#pragma once

#include <optional>
#include <string>

#include "programming/device_kind.h"
#include "programming/program_inspection.h"
#include "tool/console.h"

namespace ox::tool {

struct ProgramContent {
  const DeviceKind* kind;  ///< that the file has the size for
  Bytes file;
};

/// Reads a program file; its kind is told by its size. Nothing when it has no kind's size or cannot be read:
/// the user has been told then.
std::optional<ProgramContent> ReadProgram(const Console& console, const std::string& path);

}  // namespace ox::tool
