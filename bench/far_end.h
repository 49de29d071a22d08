// The device's end of a pseudo-terminal, in a thread of its own.
#pragma once

#include <atomic>
#include <functional>
#include <thread>

#include "simulator/pty/port_link.h"
#include "simulator/pty/pty_line.h"

namespace ox::bench {

/// A line under the name COM1 of the working folder. Silent until it is told how to answer.
class FarEnd {
 public:
  FarEnd() : link_("COM1", line_.Path()) {}
  FarEnd(const FarEnd&) = delete;
  FarEnd& operator=(const FarEnd&) = delete;
  ~FarEnd();

  /// Hands everything that arrives from now on to `answer`, which runs in the thread.
  void Answer(std::function<void(BytesView arrived)> answer);

  // To be called by `answer`.

  /// Puts the bytes on the line; returns when all of them wait there.
  void Write(BytesView bytes) {
    Fill(bytes);
    Finish();
  }
  /// Puts as many of the bytes on the line as the host holds, some 20000; what is left waits for Finish.
  void Fill(BytesView bytes) { line_.Write(bytes); }
  /// Puts the rest on the line as room comes.
  void Finish();

 private:
  void Listen(const std::function<void(BytesView arrived)>& answer);

  sim::PtyLine line_;
  sim::PortLink link_;
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

}  // namespace ox::bench
