// One read or write that the system carries out beside the program.
#include "platform/win32/transfer.h"

#include <algorithm>
#include <utility>

#include "platform/port_errors.h"
#include "platform/win32/handle.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

using std::chrono::steady_clock;

constexpr DWORD kBreakOffTime = 400;  // ms; then the driver is taken to be stuck

}  // namespace

struct Transfer::Work {
  OVERLAPPED overlapped{};
  Bytes bytes;
  Handle ended = NewEvent();
};

Transfer::Transfer(void* port) : port_(port), work_(std::make_unique<Work>()) {
  if (!work_->ended.Valid()) throw HungUp();
}

Transfer::~Transfer() {
  if (!begun_ || HasEnded()) return;
  CancelIoEx(port_, &work_->overlapped);
  // A driver that does not give the transfer back may still write to its memory, which is left to it then.
  if (WaitForSingleObject(Ended(), kBreakOffTime) != WAIT_OBJECT_0) static_cast<void>(work_.release());
}

void* Transfer::Ended() const {
  return work_->ended.Get();
}

bool Transfer::HasEnded() const {
  return begun_ && WaitForSingleObject(Ended(), 0) == WAIT_OBJECT_0;
}

bool Transfer::HasFailed() const {
  DWORD count = 0;
  return refused_ || GetOverlappedResult(port_, &work_->overlapped, &count, FALSE) == 0 ||
         count != work_->bytes.size();
}

void Transfer::Begin(Bytes bytes) {
  ResetEvent(Ended());
  work_->bytes = std::move(bytes);
  work_->overlapped = {};
  work_->overlapped.hEvent = Ended();
  begun_ = true;
}

void Transfer::Note(bool accepted) {
  refused_ = !accepted && GetLastError() != ERROR_IO_PENDING;
  if (refused_) SetEvent(Ended());
}

void Transfer::BeginReading(std::size_t count) {
  Begin(Bytes(count, '\0'));
  Note(ReadFile(port_, work_->bytes.data(), static_cast<DWORD>(count), nullptr, &work_->overlapped) != 0);
}

void Transfer::BeginWriting(BytesView bytes) {
  Begin(Bytes(bytes));
  Note(WriteFile(port_, work_->bytes.data(), static_cast<DWORD>(bytes.size()), nullptr, &work_->overlapped) !=
       0);
}

bool Transfer::WaitUntil(steady_clock::time_point time) const {
  using std::chrono::milliseconds;
  const auto left = std::chrono::ceil<milliseconds>(time - steady_clock::now());
  const auto wait = static_cast<DWORD>(std::max(left, milliseconds::zero()).count());
  return WaitForSingleObject(Ended(), wait) == WAIT_OBJECT_0;
}

Bytes Transfer::Take() {
  const bool failed = HasFailed();
  begun_ = false;
  ResetEvent(Ended());
  if (failed) throw HungUp();
  return std::move(work_->bytes);
}

}  // namespace ox
