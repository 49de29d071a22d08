// The waiting operations of the text dialogue, and the wake-up that every dialogue begins with.
#pragma once

#include "link/receive_buffer.h"
#include "link/serial_line.h"
#include "platform/machine.h"

namespace ox {

/// Waits on one line. Owns the receive buffer: characters that CollectReply has taken from the port and not
/// yet consumed.
class LineWaits {
 public:
  LineWaits(Machine& machine, SerialLine& line) : machine_(machine), line_(line) {}

  /// The first non-empty text that the port delivers, one character or several; empty after 1.0 s. The length
  /// of the wait is fixed: `seconds` only says how long after midnight the wait goes on in any case. Throws
  /// PortError.
  Bytes WaitForInput(int seconds);

  /// One reply line with its CR; "N" as soon as it begins one; "R" that nothing follows within 50 ms, or a
  /// CR, which is dropped; or what had come when `seconds` passed without a character, or when more than
  /// kLongestReply were taken since DropReceived. What follows stays in the receive buffer; the port is read
  /// only when that is empty. The pieces in which a reply arrives make no difference. Throws PortError.
  Bytes CollectReply(int seconds);

  /// Empties the receive buffer, before a reply.
  void DropReceived() { received_.Clear(); }

  /// Sends "S" up to three times until an answer comes, traces both, and returns the answer or nothing.
  /// Throws PortError.
  Bytes WakeUp();

 private:
  /// Reads the port when nothing is in hand; whether anything is then.
  bool Receive();
  /// Whether a line that CollectReply has begun is at its end.
  bool Whole(const Bytes& line);
  /// After an "R" that begins a line: waits for what follows it, and takes the CR that belongs to it.
  bool LineEndsHere();

  Machine& machine_;
  SerialLine& line_;
  ReceiveBuffer received_;
};

}  // namespace ox
