// The three streams that every program is started with.
#pragma once

namespace ox {

/// Sees to it that standard input, output and error are open. A program can be started without them; the next
/// file or connection that it opened would take their numbers, and what is told on the standard error stream
/// would go there. Made before anything is opened.
struct StandardStreams {
  StandardStreams();
};

}  // namespace ox
