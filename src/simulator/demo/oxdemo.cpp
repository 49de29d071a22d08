// oxdemo [folder]: writes the demo programs and the demo loader file into the folder, else into "demo".
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "simulator/demo/demo_files.h"

namespace {

bool WriteFile(const std::filesystem::path& path, ox::BytesView content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) std::cerr << path.string() << ": lässt sich nicht schreiben\n";
  return static_cast<bool>(file);
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path folder = argc > 1 ? argv[1] : "demo";
  const bool written = WriteFile(folder / "ox2.pro", ox::sim::DemoProgram2()) &&
                       WriteFile(folder / "ox3.pr3", ox::sim::DemoProgram3()) &&
                       WriteFile(folder / "OX3NEU.LDR", ox::sim::DemoLoaderHex());
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
