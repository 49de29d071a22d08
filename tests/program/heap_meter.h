// Tells what the program keeps on the heap, and lets its allocations fail.
#pragma once

#include <cstddef>

namespace ox::test {

/// What the program, as long as an Exposure lives and no Shelter within it, has allocated and not given back.
struct HeapUse {
  long blocks = 0;
  long bytes = 0;
};
HeapUse ProgramHeap();

enum class Failing { Once, FromThenOn };

/// Lets the program's allocation number `nth`, counted from 1 and from now, throw std::bad_alloc, and with
/// FromThenOn every one behind it.
void FailAllocation(long nth, Failing failing);
/// Lets everything succeed again; returns whether an allocation failed.
bool StopFailing();

/// Switches between the test's own code, whose allocations are neither counted nor fail, and the program's.
/// A test begins in its own code.
class Side {
 public:
  explicit Side(bool program);
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;
  ~Side();

 private:
  bool before_;
};

/// From here on it is the program that runs.
struct Exposure : Side {
  Exposure() : Side(true) {}
};
/// From here on it is the test or its host that runs.
struct Shelter : Side {
  Shelter() : Side(false) {}
};

}  // namespace ox::test
