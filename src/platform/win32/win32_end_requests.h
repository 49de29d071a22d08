// What this host tells a program on a console when it is to end.
#pragma once

#include "platform/end_requests.h"
#include "platform/win32/handle.h"

namespace ox {

/// Takes Ctrl+C and Ctrl+Break, and that the console is closed, the user logs off or the PC shuts down, for
/// its own life. One in a program. The last three end the program when their time is over, some seconds
/// later, whatever it does; that a run is not cut off by a shutdown is the matter of Win32KeepAwake. A
/// program without a console is told by its windows instead.
class Win32EndRequests : public EndRequests {
 public:
  Win32EndRequests();
  ~Win32EndRequests() override;

  WaitHandle Handle() const override;

  /// What the host calls, on a thread of its own, with the kind of request (CTRL_C_EVENT ...). False when
  /// nobody has asked for requests: then it ends the program. From all but Ctrl+C and Ctrl+Break it does not
  /// return, since the host would end the program at once before that has come to its end.
  static bool Request(unsigned long kind);

 private:
  class Handle requested_;  // set once a request has come
};

}  // namespace ox
