// One serial line from its opening to its closing: reading, writing, and knowing when all has been sent.
#include "platform/posix/open_line.h"

#include <poll.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

#include "platform/port_errors.h"
#include "platform/posix/terminal_settings.h"

namespace ox {
namespace {

using std::chrono::nanoseconds;
using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kQueueCheck{2};   // between two looks at the host's output queue
constexpr std::size_t kReadSize = 4096;               // bytes; the host's own buffer is no larger
constexpr std::size_t kMostPerRead = 16 * kReadSize;  // bytes; keeps a line that never pauses from holding us

/// Waits for the events or for a hang-up until the time comes; true when one of the events has come.
bool WaitFor(int descriptor, short events, steady_clock::time_point end) {
  constexpr nanoseconds::rep kPerSecond = std::nano::den;
  for (;;) {
    const nanoseconds left = std::max<nanoseconds>(end - steady_clock::now(), nanoseconds::zero());
    const timespec timeout{static_cast<time_t>(left.count() / kPerSecond),
                           static_cast<long>(left.count() % kPerSecond)};
    pollfd waited{descriptor, events, 0};
    const int ready = ppoll(&waited, 1, &timeout, nullptr);
    if (ready < 0 && errno == EINTR) continue;
    return (waited.revents & events) != 0;
  }
}

/// Bytes that the host has not sent yet; none where it cannot say, as on a pseudo-terminal.
int Unsent(int descriptor) {
  int count = 0;
  return ioctl(descriptor, TIOCOUTQ, &count) == 0 ? count : 0;
}

}  // namespace

OpenLine::OpenLine(const std::string& path, const LineSettings& settings)
    : device_(path), settings_(settings) {
  ApplyLineSettings(settings, Number());
}

void OpenLine::Write(BytesView bytes) {
  const Bytes cut = settings_.Cut(bytes);
  const auto deadline = sending_.EndWith(cut.size()) + SendingTime::kGrace;
  for (BytesView rest = cut; !rest.empty();) {
    const ssize_t written = write(Number(), rest.data(), rest.size());
    if (written > 0) {
      sending_.NoteWritten(static_cast<std::size_t>(written));
      rest.remove_prefix(static_cast<std::size_t>(written));
    } else if (written < 0 && errno != EAGAIN && errno != EINTR) {
      throw HungUp();
    } else if (steady_clock::now() >= deadline || !WaitFor(Number(), POLLOUT, deadline)) {
      throw SendsNothing();
    }
  }
}

Bytes OpenLine::Read() {
  Bytes arrived;
  std::array<char, kReadSize> buffer{};
  while (arrived.size() < kMostPerRead) {
    const ssize_t count = read(Number(), buffer.data(), buffer.size());
    if (count > 0) {
      arrived.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count < 0 && errno == EINTR) {
      continue;
    } else if (arrived.empty() && !(count < 0 && errno == EAGAIN)) {
      throw HungUp();
    } else {
      break;  // a hang-up behind the last characters is found by the next read
    }
  }
  if (!arrived.empty()) sending_.NoteAnswer();
  return settings_.Cut(arrived);
}

void OpenLine::SetDataTerminalReady(bool on) {
  const int line = TIOCM_DTR;
  if (ioctl(Number(), on ? TIOCMBIS : TIOCMBIC, &line) != 0 && (errno == EIO || errno == ENODEV))
    throw HungUp();
}

void OpenLine::WaitUntilSent() noexcept {
  // An empty queue of the host is not enough: a pseudo-terminal always reports an empty one, and an adapter
  // has a queue of its own.
  constexpr short kHangUpOnly = 0;
  const int number = Number();
  WaitFor(number, kHangUpOnly, sending_.End());
  const auto latest = sending_.End() + SendingTime::kGrace;
  while (Unsent(number) > 0 && steady_clock::now() < latest) {
    WaitFor(number, kHangUpOnly, steady_clock::now() + kQueueCheck);
  }
}

}  // namespace ox
