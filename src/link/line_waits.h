// The waiting operations of the text dialogue, and the wake-up that every dialogue begins with.
#pragma once

#include <cstddef>

#include "link/serial_line.h"
#include "ui/host.h"

namespace ox {

/// Waits on one line. All clock comparisons are in single precision on a clock that falls back to 0 at
/// midnight: a wait that midnight overtakes ends only with input, and in the first seconds of a day no wait
/// ends by time.
class LineWaits {
 public:
  /// The wait that the dialogues pass everywhere, in seconds.
  static constexpr int kDialogueWait = 1;

  /// Bytes. A reply, acknowledgement or identification that is longer is no longer listened to: the wait ends
  /// as by silence.
  static constexpr std::size_t kLongestReply = 1'048'576;

  LineWaits(Host& host, SerialLine& line) : host_(host), line_(line) {}

  /// The first non-empty text that the port delivers, one character or several; empty after 1.0 s. The length
  /// of the wait is fixed: `seconds` only says how long after midnight the wait goes on in any case. Throws
  /// PortError.
  Bytes WaitForInput(int seconds);

  /// One reply line with its CR; "N" as soon as it begins one; "R" that nothing follows within 50 ms, or a
  /// CR, which is dropped; or what had come when `seconds` passed without a character, or when more than
  /// kLongestReply were taken since the receive buffer was emptied. What follows stays in that buffer; the
  /// port is read only when it is empty. The pieces in which a reply arrives make no difference. Throws
  /// PortError.
  Bytes CollectReply(int seconds);

  /// Sends "S" up to three times until an answer comes, traces both, and returns the answer or nothing.
  /// Throws PortError.
  Bytes WakeUp();

 private:
  bool GoesOn(float start, float length, int seconds) const;
  /// After an "R" that begins a line: waits for what follows it, and takes the CR that belongs to it.
  bool LineEndsHere();

  Host& host_;
  SerialLine& line_;
};

}  // namespace ox
