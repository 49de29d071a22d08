// Requests from outside that the program end.
#pragma once

#include "platform/wait_handle.h"

namespace ox {

/// What the host asks of a program whose user is not at hand: on POSIX by a signal, on Windows at the end of
/// a console or a session. The window system brings the program to its end then: see `Window::RequestEnd`.
class EndRequests {
 public:
  EndRequests() = default;
  EndRequests(const EndRequests&) = delete;
  EndRequests& operator=(const EndRequests&) = delete;
  virtual ~EndRequests() = default;

  /// Ready once a request has come, and from then on. Nothing is read from it, and a second request changes
  /// nothing.
  virtual WaitHandle Handle() const = 0;
};

}  // namespace ox
