// The border between the toolkit and the program.
#pragma once

#include <cstdio>
#include <exception>

namespace ox {

/// Runs what an event of the toolkit asks of the program. The toolkit cannot be left by an exception, so one
/// that a window did not keep to itself ends here.
template <class Action>
void AtBorder(Action action) noexcept {
  try {
    action();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "oxservice: %s\n", failure.what());
  }
}

}  // namespace ox
