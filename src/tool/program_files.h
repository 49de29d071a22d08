// Program files as commands read them.
#pragma once

#include <string>

#include "programming/device_kind.h"
#include "programming/program_inspection.h"
#include "tool/console.h"

namespace ox::tool {

struct ProgramContent {
  const DeviceKind* kind = nullptr;  ///< that the file has the size for; null when it is no program
  Bytes file;
  std::string fault;  ///< why it is none
};

/// Reads a program file; its kind is told by its size. When it has no kind's size or cannot be read the user
/// has been told.
ProgramContent ReadProgram(const Console& console, const std::string& path);

}  // namespace ox::tool
