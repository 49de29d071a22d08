// One serial line from its opening to its closing: reading, writing, and knowing when all has been sent.
#include "platform/win32/overlapped_line.h"

#include <algorithm>
#include <optional>

#include "platform/port_errors.h"
#include "platform/win32/line_state.h"
#include "platform/win32/opening_fault.h"
#include "platform/win32/windows_api.h"

namespace ox {
namespace {

constexpr DWORD kQueueCheck = 2;             // ms between two looks at the driver's output queue
constexpr std::size_t kWriteSize = 4096;     // bytes that the driver has to send at a time
constexpr std::size_t kMostPerRead = 65536;  // bytes; keeps a line that never pauses from holding us

/// The driver alone keeps other programs away: a port is not shared.
HANDLE OpenDevice(const std::wstring& path) {
  constexpr DWORD kNotShared = 0;
  HANDLE port = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, kNotShared, nullptr, OPEN_EXISTING,
                            FILE_FLAG_OVERLAPPED, nullptr);
  if (port == INVALID_HANDLE_VALUE) throw OpeningFault(GetLastError());
  return port;
}

/// What waits in the driver's queues; nothing when the line has hung up.
std::optional<COMSTAT> Queues(HANDLE port) {
  DWORD mistakes = 0;
  COMSTAT queues{};
  return ClearCommError(port, &mistakes, &queues) != 0 ? std::optional(queues) : std::nullopt;
}

}  // namespace

OverlappedLine::OverlappedLine(const std::wstring& path, const LineSettings& settings)
    : port_(OpenDevice(path)), settings_(settings) {
  ApplyLineSettings(settings, port_.Get());
  first_.BeginReading(1);
}

OverlappedLine::~OverlappedLine() {
  // The read under way may have taken a character already: what is behind it would be a message without its
  // first character.
  PurgeComm(port_.Get(), PURGE_RXCLEAR);
}

WaitHandle OverlappedLine::Readiness() const {
  return reinterpret_cast<WaitHandle>(first_.Ended());
}

void OverlappedLine::Write(BytesView bytes) {
  const Bytes cut = settings_.Cut(bytes);
  const auto deadline = sending_.EndWith(cut.size()) + SendingTime::kGrace;
  for (BytesView left = cut; !left.empty(); left.remove_prefix(std::min(kWriteSize, left.size()))) {
    FinishWriting(deadline);
    const BytesView next = left.substr(0, kWriteSize);
    leaving_.BeginWriting(next);
    sending_.NoteWritten(next.size());
  }
  if (leaving_.HasEnded()) leaving_.Take();
}

/// Waits for the write under way, since drivers differ in what they do with two.
void OverlappedLine::FinishWriting(SendingTime::TimePoint deadline) {
  if (!leaving_.Begun()) return;
  if (!leaving_.WaitUntil(deadline)) throw SendsNothing();
  leaving_.Take();
}

Bytes OverlappedLine::Read() {
  Bytes arrived;
  while (arrived.size() < kMostPerRead && first_.HasEnded()) {
    if (!arrived.empty() && first_.HasFailed()) break;  // the next read throws
    arrived += first_.Take();
    arrived += TakeRest();
    first_.BeginReading(1);
  }
  if (!arrived.empty()) sending_.NoteAnswer();
  return settings_.Cut(arrived);
}

/// What the driver holds behind the first character; nothing on a hang-up, which the next read finds.
Bytes OverlappedLine::TakeRest() {
  const std::optional<COMSTAT> queues = Queues(port_.Get());
  if (!queues || queues->cbInQue == 0) return {};
  rest_.BeginReading(std::min<std::size_t>(queues->cbInQue, kMostPerRead));
  const bool there = rest_.WaitUntil(SendingTime::Clock::now() + SendingTime::kGrace) && !rest_.HasFailed();
  return there ? rest_.Take() : Bytes();
}

void OverlappedLine::SetDataTerminalReady(bool on) {
  const bool switched = EscapeCommFunction(port_.Get(), on ? SETDTR : CLRDTR) != 0;
  if (!switched && !Queues(port_.Get())) throw HungUp();
}

void OverlappedLine::WaitUntilSent() noexcept {
  // The driver's own word is not enough: an adapter has a queue of its own.
  const auto latest = sending_.End() + SendingTime::kGrace;
  for (auto queues = Queues(port_.Get()); queues; queues = Queues(port_.Get())) {
    const bool sending = queues->cbOutQue > 0 || (leaving_.Begun() && !leaving_.HasEnded());
    if (SendingTime::Clock::now() >= (sending ? latest : sending_.End())) return;
    Sleep(kQueueCheck);
  }
}

}  // namespace ox
