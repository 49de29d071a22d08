// The signals of this host that ask the program to end.
#include "platform/posix/posix_end_requests.h"

#include <fcntl.h>

#include <array>
#include <atomic>
#include <cerrno>

namespace ox {
namespace {

/// Where the signals' handler writes to; a handler can reach only global variables.
std::atomic<int> requestPipe{Descriptor::kNone};
static_assert(std::atomic<int>::is_always_lock_free, "a signal's handler may not wait");

void Request(int /*signal*/) {
  const int before = errno;
  // When the pipe is full, the request is known already.
  [[maybe_unused]] const ssize_t written = write(requestPipe, "", 1);
  errno = before;
}

bool IsIgnored(int signal) {
  struct sigaction now {};
  return sigaction(signal, nullptr, &now) == 0 && now.sa_handler == SIG_IGN;
}

}  // namespace

PosixEndRequests::PosixEndRequests() {
  Take(SIGPIPE, SIG_IGN);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return;  // the signals end the program at once then
  requested_ = Descriptor(ends[0]);
  request_ = Descriptor(ends[1]);
  requestPipe = request_.Number();
  Take(SIGTERM, Request);
  Take(SIGINT, Request);
  if (!IsIgnored(SIGHUP)) Take(SIGHUP, Request);  // "nohup" has it ignored
}

PosixEndRequests::~PosixEndRequests() {
  for (const Taken& taken : taken_) sigaction(taken.signal, &taken.before, nullptr);
  requestPipe = Descriptor::kNone;
}

void PosixEndRequests::Take(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  Taken taken{signal, {}};
  if (sigaction(signal, &action, &taken.before) == 0) taken_.push_back(taken);
}

}  // namespace ox
