// Tells what the program keeps on the heap, and lets its allocations fail.
#pragma once

namespace ox::test {

/// The heap of the program's side, as the allocation operators of this test program see it.
struct HeapMeter {
  long kept = 0;            // bytes that were allocated and not given back
  long untilFailure = 0;    // allocations until one throws std::bad_alloc; 0: none will
  bool fromThenOn = false;  // and so does every one behind it
  bool failed = false;      // one has
};

inline HeapMeter heap;

}  // namespace ox::test
