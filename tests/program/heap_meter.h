// Tells what the program keeps on the heap, and lets its allocations fail.
#pragma once

#include <cstddef>

namespace ox::test {

/// How many bytes the program has allocated on its side and not given back.
long ProgramHeap();

enum class Failing { Once, FromThenOn };

/// Lets the program's allocation number `nth`, counted from 1 and from now, throw std::bad_alloc, and with
/// FromThenOn every one behind it.
void FailAllocation(long nth, Failing failing);
/// Lets everything succeed again; returns whether an allocation failed.
bool StopFailing();

}  // namespace ox::test
