// The border between the toolkit and the program.
#pragma once

#include <cstdio>
#include <exception>

namespace ox {

/// Runs what an event of the toolkit asks of the program. An exception must not pass through the toolkit, so
/// an exception that no window has caught ends here.
template <class Action>
void AtBorder(Action action) noexcept {
  try {
    action();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "oxservice: %s\n", failure.what());
  }
}

}  // namespace ox
