// The three streams that every program is started with.
#pragma once

namespace ox {

/// Sees to it that standard input, output and error lead somewhere; each host does so in its folder. A
/// program can be started without them. On POSIX the next file or connection that it opened would take their
/// numbers, and what is told on the standard error stream would go there; on Windows it would fail. Made
/// before anything is opened or written.
struct StandardStreams {
  StandardStreams();
};

}  // namespace ox
