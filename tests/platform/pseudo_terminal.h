// The far end of a serial line: the master of a pseudo-terminal, with its other side linked as COM1.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/posix/descriptor.h"

namespace ox {

class PseudoTerminal {
 public:
  /// Links its line as `name` into the working folder, in place of an earlier link.
  explicit PseudoTerminal(const std::string& name = "COM1")
      : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    grantpt(master_.Number());
    unlockpt(master_.Number());
    path_ = ptsname(master_.Number());
    std::filesystem::remove(name);
    std::filesystem::create_symlink(path_, name);
  }

  const std::string& Path() const { return path_; }
  Descriptor OpenOtherSide() const { return Descriptor(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)); }

  bool Write(const std::string& bytes) {
    return write(master_.Number(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
  }

  /// The next `count` bytes; fewer when nothing comes for a while.
  std::string Read(std::size_t count) {
    constexpr int kPatienceMilliseconds = 500;
    std::string bytes(count, '\0');
    std::size_t have = 0;
    pollfd waited{master_.Number(), POLLIN, 0};
    while (have < count && poll(&waited, 1, kPatienceMilliseconds) > 0) {
      const ssize_t got = read(master_.Number(), bytes.data() + have, count - have);
      if (got <= 0) break;
      have += static_cast<std::size_t>(got);
    }
    bytes.resize(have);
    return bytes;
  }

  /// How the other side has set the line.
  termios Attributes() const {
    termios attributes{};
    tcgetattr(master_.Number(), &attributes);
    return attributes;
  }

  /// Pulls the cable.
  void HangUp() { master_.Close(); }

 private:
  Descriptor master_;
  std::string path_;
};

}  // namespace ox
