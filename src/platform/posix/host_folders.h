// Where this host tells about its devices and programs.
#pragma once

#include <filesystem>

namespace ox {

/// A test makes such folders of its own.
struct HostFolders {
  std::filesystem::path devices = "/dev";
  std::filesystem::path system = "/sys";      // sysfs
  std::filesystem::path processes = "/proc";  // procfs
};

}  // namespace ox
