// The allocation operators of the test program, with a note in front of every block.
#include "program/heap_meter.h"

#include <cstdlib>
#include <new>

#include "support/side.h"

namespace ox::test {
namespace {

/// As far as blocks must be aligned.
struct alignas(std::max_align_t) BlockNote {
  std::size_t size;
  bool ofProgram;

  long Counted() const { return ofProgram ? static_cast<long>(size) : 0; }
};

long programHeap = 0;
/// Allocations of the program until one fails; 0 when none will.
long untilFailure = 0;
bool failsFromThenOn = false;
bool hasFailed = false;

bool FailsNow() {
  if (!Side::ProgramRuns() || untilFailure == 0) return false;
  if (untilFailure > 1) {
    --untilFailure;
    return false;
  }
  if (!failsFromThenOn) untilFailure = 0;
  hasFailed = true;
  return true;
}

}  // namespace

long ProgramHeap() {
  return programHeap;
}

void FailAllocation(long nth, Failing failing) {
  untilFailure = nth;
  failsFromThenOn = failing == Failing::FromThenOn;
  hasFailed = false;
}

bool StopFailing() {
  untilFailure = 0;
  return hasFailed;
}

}  // namespace ox::test

// The forms that single objects and containers use; arrays, which the program has none of, are left to the
// library.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  using namespace ox::test;
  if (FailsNow()) return nullptr;
  auto* note = static_cast<BlockNote*>(std::malloc(sizeof(BlockNote) + size));
  if (note == nullptr) return nullptr;
  *note = {size, Side::ProgramRuns()};
  programHeap += note->Counted();
  return note + 1;
}
void* operator new(std::size_t size) {
  void* block = operator new(size, std::nothrow);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept {
  if (block == nullptr) return;
  auto* note = static_cast<ox::test::BlockNote*>(block) - 1;
  ox::test::programHeap -= note->Counted();
  std::free(note);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  operator delete(block);
}
