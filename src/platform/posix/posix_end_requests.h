// The signals of this host that ask the program to end.
#pragma once

#include <csignal>
#include <vector>

#include "platform/end_requests.h"
#include "platform/posix/descriptor.h"

namespace ox {

/// Takes SIGTERM, SIGINT and, unless the program was started to survive it, SIGHUP for its own life. Also
/// sees to it that SIGPIPE, which a closed standard error sends, does not end the program. One in a program,
/// made before its threads.
class PosixEndRequests : public EndRequests {
 public:
  PosixEndRequests();
  ~PosixEndRequests() override;

  WaitHandle Handle() const override { return requested_.Number(); }

 private:
  struct Taken {
    int signal;
    struct sigaction before;
  };

  void Take(int signal, void (*handler)(int));

  Descriptor requested_;  // can be read once a signal has come
  Descriptor request_;    // what the signals write to
  std::vector<Taken> taken_;
};

}  // namespace ox
