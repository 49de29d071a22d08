// A pseudo-terminal whose other side a program opens like a serial port.
#pragma once

#include <cstddef>
#include <string>

#include "platform/bytes.h"
#include "simulator/line/line_settings.h"

namespace ox::sim {

/// Holds both sides open, so that a program at the other side may come and go without hang-ups and nothing
/// that was written to it gets lost meanwhile. Raw from the start.
class PtyLine {
 public:
  /// Throws std::system_error when the host gives no pseudo-terminal.
  PtyLine();
  PtyLine(const PtyLine&) = delete;
  PtyLine& operator=(const PtyLine&) = delete;
  /// A program that has the other side open sees a hang-up.
  ~PtyLine();

  /// To wait on; readable when the PC has sent something.
  int Descriptor() const { return master_; }
  /// What a program opens, "/dev/pts/5".
  const std::string& Path() const { return path_; }

  /// The settings that the program has made. A pseudo-terminal shows no character size and of the parity only
  /// whether it is odd and whether the input is checked: without either it counts as none with 8 data bits,
  /// else as one with 7.
  LineSettings PcSettings() const;
  /// What has arrived, at most so many bytes; empty when nothing has.
  Bytes Read(std::size_t most = Bytes::npos);
  /// Writes without blocking; what the host does not take yet waits for Flush.
  void Write(BytesView bytes);
  /// Writes again what waits.
  void Flush();
  /// Whether something waits until the descriptor can be written.
  bool Waiting() const { return !unwritten_.empty(); }
  /// Takes back what was written and not yet read.
  void DropUnread();

 private:
  int master_ = -1;
  int slave_ = -1;
  std::string path_;
  Bytes unwritten_;
};

}  // namespace ox::sim
