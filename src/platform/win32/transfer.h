// One read or write that the system carries out beside the program.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>

#include "platform/bytes.h"

namespace ox {

/// On a port that was opened for overlapped use and is closed after its transfers. A transfer begins, ends by
/// itself and is taken; then the next may begin.
class Transfer {
 public:
  /// Throws PortError when the system has no event left.
  explicit Transfer(void* port);
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  /// Breaks off what is under way.
  ~Transfer();

  /// Set while a transfer has ended, well or not, and was not taken.
  void* Ended() const;
  bool HasEnded() const;
  /// Of one that has ended: whether not everything was read or written.
  bool HasFailed() const;
  /// Whether one was begun and not taken.
  bool Begun() const { return begun_; }

  /// Reads so many bytes, not fewer.
  void BeginReading(std::size_t count);
  /// Writes the bytes, of which a copy is kept.
  void BeginWriting(BytesView bytes);

  /// Waits until the transfer has ended or the time comes; whether it has ended.
  bool WaitUntil(std::chrono::steady_clock::time_point time) const;

  /// What was read or written by the transfer that has ended. Throws PortError when that was not all.
  Bytes Take();

 private:
  struct Work;

  void Begin(Bytes bytes);
  void Note(bool accepted);

  void* port_;
  std::unique_ptr<Work> work_;  // the system's while a transfer is under way
  bool begun_ = false;
  bool refused_ = false;  // the system did not even begin
};

}  // namespace ox
