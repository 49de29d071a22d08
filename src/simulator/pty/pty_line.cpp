// Pseudo-terminals of this host.
#include "simulator/pty/pty_line.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace ox::sim {
namespace {

constexpr unsigned kBaudWhenUnknown = 9600;

unsigned BaudOf(speed_t speed) {
  constexpr std::array<std::pair<speed_t, unsigned>, 8> kSpeeds{{{B1200, 1200},
                                                                 {B2400, 2400},
                                                                 {B4800, 4800},
                                                                 {B9600, 9600},
                                                                 {B19200, 19200},
                                                                 {B38400, 38400},
                                                                 {B57600, 57600},
                                                                 {B115200, 115200}}};
  for (const auto& [known, baud] : kSpeeds) {
    if (known == speed) return baud;
  }
  return kBaudWhenUnknown;
}

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

PtyLine::PtyLine() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
  if (master_ < 0) Fail("Pseudoterminal");
  std::array<char, 64> name{};
  const bool ready =
      grantpt(master_) == 0 && unlockpt(master_) == 0 && ptsname_r(master_, name.data(), name.size()) == 0;
  if (ready) {
    path_ = name.data();
    slave_ = open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  }
  termios settings{};
  if (slave_ < 0 || tcgetattr(slave_, &settings) != 0) {
    const int error = errno;
    close(master_);
    errno = error;
    Fail("Pseudoterminal");
  }
  cfmakeraw(&settings);
  cfsetspeed(&settings, B9600);
  tcsetattr(slave_, TCSANOW, &settings);
}

PtyLine::~PtyLine() {
  close(slave_);
  close(master_);
}

LineSettings PtyLine::PcSettings() const {
  termios settings{};
  tcgetattr(slave_, &settings);
  const unsigned baud = BaudOf(cfgetospeed(&settings));
  if ((settings.c_cflag & PARODD) != 0) return {baud, 'O', 7};
  if ((settings.c_iflag & INPCK) != 0) return {baud, 'E', 7};
  return {baud, 'N', 8};
}

Bytes PtyLine::Read(std::size_t most) {
  Bytes arrived;
  std::array<char, 4096> buffer{};
  while (arrived.size() < most) {
    const ssize_t count = read(master_, buffer.data(), std::min(buffer.size(), most - arrived.size()));
    if (count > 0) {
      arrived.append(buffer.data(), static_cast<size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      break;
    }
  }
  return arrived;
}

void PtyLine::DropUnread() {
  unwritten_.clear();
  tcflush(slave_, TCIFLUSH);
}

void PtyLine::Write(BytesView bytes) {
  if (bytes.empty()) return;
  unwritten_ += bytes;
  Flush();
}

void PtyLine::Flush() {
  while (!unwritten_.empty()) {
    const ssize_t count = write(master_, unwritten_.data(), unwritten_.size());
    if (count > 0) {
      unwritten_.erase(0, static_cast<size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      return;
    }
  }
}

}  // namespace ox::sim
