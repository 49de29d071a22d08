// How a loop that works or waits lets the rest of the host have its turn.
#pragma once

namespace ox {

class EventLoop {
 public:
  virtual ~EventLoop() = default;

  /// Handles what is pending (clicks, ticks, repaints) and returns at once. For loops with characters in
  /// hand.
  virtual void Yield() = 0;

  /// The same; with nothing pending it waits for input on the open port or for an event, some hundredths of
  /// a second at most. For loops that wait.
  virtual void Rest() = 0;
};

}  // namespace ox
