// The three streams that every program is started with.
#pragma once

namespace ox {

/// Sees to it that standard input, output and error lead somewhere: a program with windows is started without
/// them, and what is told on the standard error stream would fail. Made before anything is written.
struct StandardStreams {
  StandardStreams();
};

}  // namespace ox
