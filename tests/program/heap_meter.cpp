// The allocation operators of the test program, with a note in front of every block.
#include "program/heap_meter.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#include "support/side.h"

namespace ox::test {
namespace {

struct alignas(std::max_align_t) BlockNote {
  long counted;  // bytes; none for a block of the test's own
};

bool FailsNow() {
  if (!Side::ProgramRuns() || heap.untilFailure == 0 || --heap.untilFailure > 0) return false;
  if (heap.fromThenOn) heap.untilFailure = 1;
  heap.failed = true;
  return true;
}

}  // namespace
}  // namespace ox::test

// The forms that single objects and containers use; the program has no arrays.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  using namespace ox::test;
  if (FailsNow()) return nullptr;
  auto* note = static_cast<BlockNote*>(std::malloc(sizeof(BlockNote) + size));
  if (note == nullptr) return nullptr;
  *note = {Side::ProgramRuns() ? static_cast<long>(size) : 0};
  heap.kept += note->counted;
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
  ox::test::heap.kept -= note->counted;
  std::free(note);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  operator delete(block);
}
