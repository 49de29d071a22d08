// Asking the host for the openings of one file.
#include "simulator/pty/openings.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <system_error>

namespace ox::sim {

Openings::Openings(const std::string& path) : watch_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (watch_ >= 0 && inotify_add_watch(watch_, path.c_str(), IN_OPEN | IN_CLOSE | IN_MODIFY) >= 0) return;
  const int error = errno;
  if (watch_ >= 0) close(watch_);
  throw std::system_error(error, std::generic_category(), path);
}

Openings::~Openings() {
  close(watch_);
}

void Openings::Look() {
  constexpr std::size_t kEventsPerRead = 64;
  std::array<char, kEventsPerRead * sizeof(inotify_event)> buffer{};
  for (ssize_t count = 0; (count = read(watch_, buffer.data(), buffer.size())) > 0;) {
    inotify_event event{};
    // The events of a single file carry no name: all are of one size.
    for (std::size_t at = 0; at < static_cast<std::size_t>(count); at += sizeof(event)) {
      std::memcpy(&event, &buffer[at], sizeof(event));
      if ((event.mask & IN_MODIFY) != 0) {
        written_ = true;
      } else if ((event.mask & IN_OPEN) != 0) {
        if (open_++ == 0) writtenBefore_ = std::exchange(written_, false) || writtenBefore_;
      } else if (open_ > 0) {
        left_ = --open_ == 0 || left_;
      }
    }
  }
}

bool Openings::TakeWrittenBefore() {
  const bool now = std::exchange(written_, false);
  return std::exchange(writtenBefore_, false) && !now;
}

}  // namespace ox::sim
