// Reading and writing the files of a simulated device's memory.
#include "simulator/program/memory_file.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace ox::sim {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& file, const std::string& why) {
  throw std::runtime_error(file.string() + ": " + why);
}

void WriteFile(const fs::path& file, const Bytes& content) {
  // Written beside and renamed, so that a program that waits for the file never sees half of it.
  const fs::path beside = file.string() + ".neu";
  std::ofstream out(beside, std::ios::binary);
  out << content;
  out.close();
  std::error_code error;
  if (out) fs::rename(beside, file, error);
  if (!out || error) std::cerr << "oxsim: " << file.string() << ": lässt sich nicht schreiben" << std::endl;
}

}  // namespace

Bytes ReadMemoryFile(const fs::path& file, const DeviceOptions& options) {
  std::error_code none;
  if (!fs::exists(file, none)) return {};
  std::ifstream in(file, std::ios::binary);
  Bytes content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in) Fail(file, "lässt sich nicht lesen");
  if (content.size() != MemorySize(options)) Fail(file, "gehört zu keinem Gerät dieser Generation");
  return content;
}

void WriteMemoryFile(const fs::path& file, const DeviceMemory& memory) {
  WriteFile(file, memory.Contents());
}

void DumpMemory(const fs::path& folder, const DeviceMemory& memory) {
  WriteFile(folder / "tables.bin", memory.Tables());
  WriteFile(folder / "program.bin", memory.Program());
}

}  // namespace ox::sim
