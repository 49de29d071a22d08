// The allocation operators of the test program, with a note in front of every block.
#include "program/heap_meter.h"

#include <cstdlib>
#include <new>

namespace ox::test {
namespace {

/// As far as blocks must be aligned.
struct alignas(std::max_align_t) BlockNote {
  std::size_t size;
  bool ofProgram;
};

bool programRuns = false;
HeapUse programHeap;
/// Allocations of the program until one fails; 0 when none will.
long untilFailure = 0;
bool failsFromThenOn = false;
bool hasFailed = false;

bool FailsNow() {
  if (!programRuns || untilFailure == 0) return false;
  if (untilFailure > 1) {
    --untilFailure;
    return false;
  }
  if (!failsFromThenOn) untilFailure = 0;
  hasFailed = true;
  return true;
}

void Count(const BlockNote& note, int sign) {
  if (!note.ofProgram) return;
  programHeap.blocks += sign;
  programHeap.bytes += sign * static_cast<long>(note.size);
}

}  // namespace

void* Allocate(std::size_t size) noexcept {
  if (FailsNow()) return nullptr;
  auto* note = static_cast<BlockNote*>(std::malloc(sizeof(BlockNote) + size));
  if (note == nullptr) return nullptr;
  *note = {size, programRuns};
  Count(*note, 1);
  return note + 1;
}

void* AllocateOrThrow(std::size_t size) {
  void* block = Allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Free(void* block) noexcept {
  if (block == nullptr) return;
  BlockNote* note = static_cast<BlockNote*>(block) - 1;
  Count(*note, -1);
  std::free(note);
}

HeapUse ProgramHeap() {
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

Side::Side(bool program) : before_(programRuns) {
  programRuns = program;
}

Side::~Side() {
  programRuns = before_;
}

}  // namespace ox::test

// All forms that the library may pair with one another; over-aligned blocks are left to it.
void* operator new(std::size_t size) {
  return ox::test::AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return ox::test::AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return ox::test::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return ox::test::Allocate(size);
}
void operator delete(void* block) noexcept {
  ox::test::Free(block);
}
void operator delete[](void* block) noexcept {
  ox::test::Free(block);
}
void operator delete(void* block, std::size_t /*size*/) noexcept {
  ox::test::Free(block);
}
void operator delete[](void* block, std::size_t /*size*/) noexcept {
  ox::test::Free(block);
}
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept {
  ox::test::Free(block);
}
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept {
  ox::test::Free(block);
}
