// Receives how an update goes on: a window, a console, a test.
#pragma once

#include <cstddef>
#include <string_view>

namespace ox {

/// Called in the order of what happens; the update goes on when a call returns. Texts are UTF-8.
class UpdateObserver {
 public:
  virtual ~UpdateObserver() = default;

  /// A step of the update begins: what it is, in German; how long the device may take for each of its answers
  /// in it, in whole seconds; and how many blocks it sends, 0 for a step without blocks. Who shows no steps
  /// leaves it as it is.
  virtual void Step(std::string_view /*what*/, int /*longestSeconds*/, std::size_t /*blocks*/) {}

  /// The row of marks begins anew with its first one.
  virtual void StartMarks() = 0;
  /// The row of marks grows by one.
  virtual void Mark() = 0;

  /// The device has taken block `number`, counted from 0.
  virtual void BlockSent(std::size_t /*number*/) {}

  /// The message with which an update ends, good or bad.
  virtual void Tell(std::string_view message) = 0;
};

}  // namespace ox
