// A socket without a file: its address can be taken once on a machine, and leaves nothing behind.
#include "simulator/pty/name_claim.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sstream>
#include <system_error>

namespace ox::sim {
namespace {

/// The same for every path that leads to the name; empty when its folder does not exist.
std::string AddressOf(const std::filesystem::path& name) {
  const std::filesystem::path folder = name.has_parent_path() ? name.parent_path() : ".";
  struct stat status {};
  if (stat(folder.c_str(), &status) != 0) return {};
  std::ostringstream address;
  address << "oxsim." << status.st_dev << '.' << status.st_ino << '.' << name.filename().native();
  return address.str();
}

/// Takes an address for a socket; false when somebody has it.
bool Take(int socket, const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  char* const place = address.sun_path + 1;  // behind a zero, which says that there is no file
  const std::size_t length = std::min(name.size(), sizeof address.sun_path - 1);
  std::copy_n(name.data(), length, place);
  const auto size = static_cast<socklen_t>(place + length - reinterpret_cast<char*>(&address));
  return bind(socket, reinterpret_cast<const sockaddr*>(&address), size) == 0 || errno != EADDRINUSE;
}

}  // namespace

NameClaim::NameClaim(const std::string& name) : socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  const std::string address = AddressOf(name);
  if (address.empty() || Take(socket_, address)) return;
  close(socket_);
  throw std::system_error(EBUSY, std::generic_category(), name + " hat schon ein anderes oxsim");
}

NameClaim::~NameClaim() {
  close(socket_);
}

}  // namespace ox::sim
