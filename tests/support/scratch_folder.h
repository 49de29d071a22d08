// A folder of its own for a test or a figure, which runs inside it; gone afterwards.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace ox {

class ScratchFolder {
 public:
  ScratchFolder() {
    std::random_device any;
    do path_ = std::filesystem::temp_directory_path() / ("ox-test-" + std::to_string(any()));
    while (!std::filesystem::create_directory(path_));
    std::filesystem::permissions(path_, std::filesystem::perms(0755));
    std::filesystem::current_path(path_);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  ~ScratchFolder() {
    std::filesystem::current_path(before_);
    std::filesystem::remove_all(path_);
  }

 private:
  std::filesystem::path before_ = std::filesystem::current_path();
  std::filesystem::path path_;
};

inline void WriteFile(const std::filesystem::path& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace ox
