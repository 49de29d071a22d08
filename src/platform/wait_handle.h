// What a window system can wait for beside its own events.
#pragma once

#include <cstdint>

namespace ox {

/// Names something of the host that becomes ready by itself: on POSIX a descriptor, ready when it can be
/// read; on Windows the handle of an event, ready when it is set. Whoever hands it out owns it. The window
/// system gives it to its toolkit, which knows the same host, and the rest of the program passes it on
/// unread.
using WaitHandle = std::intptr_t;

}  // namespace ox
