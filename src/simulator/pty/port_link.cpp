// Making and removing the link.
#include "simulator/pty/port_link.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace ox::sim {
namespace {

namespace fs = std::filesystem;

constexpr char kPseudoTerminals[] = "/dev/pts/";

std::string TargetOf(const std::string& name) {
  std::error_code none;
  return fs::read_symlink(name, none).string();
}

}  // namespace

PortLink::PortLink(std::string name, std::string target)
    : name_(std::move(name)), target_(std::move(target)) {
  std::error_code error;
  if (TargetOf(name_).rfind(kPseudoTerminals, 0) == 0) fs::remove(name_, error);
  fs::create_symlink(target_, name_, error);
  if (error) throw std::system_error(error, name_);
}

PortLink::~PortLink() {
  std::error_code error;
  if (TargetOf(name_) == target_) fs::remove(name_, error);
}

}  // namespace ox::sim
