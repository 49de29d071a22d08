// The size tells the kind.
#include "tool/program_files.h"

#include <utility>

#include "tool/files.h"

namespace ox::tool {

ProgramContent ReadProgram(const Console& console, const std::string& path) {
  constexpr std::size_t kMaxFile = std::size_t{1024} * 1024;  // bytes; to name the size of what is no program
  auto [file, fault] = ReadInput(console, path, kMaxFile);
  if (!file) return {nullptr, {}, std::move(fault)};
  std::string expected;
  for (const DeviceKind& kind : DeviceKinds()) {
    const std::size_t size = kind.program.format.FileSize();
    if (file->size() == size) return {&kind, std::move(*file), {}};
    expected.append(expected.empty() ? "" : " oder ").append(std::to_string(size));
    expected.append(" (").append(kind.name).append(")");
  }
  fault = std::to_string(file->size()) + " Bytes, erwartet " + expected;
  console.Say(path + ": " + fault);
  console.Fail(ProgramFileFault(ProgramFileStatus::kWrongSize, path));
  return {nullptr, {}, std::move(fault)};
}

}  // namespace ox::tool
