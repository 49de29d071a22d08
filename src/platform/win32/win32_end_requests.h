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

 private:
  class Handle requested_;  // set once a request has come
};

}  // namespace ox
