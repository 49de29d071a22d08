// A serial line's own time: every character takes its bits to get across.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <optional>

#include "simulator/line/endpoint.h"

namespace ox::sim {

/// Stands between the PC and one end. A character reaches the end when its last bit does, and the other way
/// round; each direction carries one character after the other. All times are worked out from the characters
/// before, not from when somebody looks, so delays of the caller do not add up.
class PacedLine {
 public:
  /// Unpaced, characters take no time at all. The end must outlive the line.
  PacedLine(Endpoint& end, bool paced) : end_(end), paced_(paced) {}

  /// Characters that the PC begins to send now, with its settings; no more than Room.
  void FromPc(BytesView bytes, const LineSettings& pc, Seconds now);
  /// How many further characters it takes: a block's worth ahead of what the line has carried.
  std::size_t Room() const { return kAhead - std::min(kAhead, incoming_.size()); }
  /// Lets everything happen that is due by now; returns what the PC has read of it. `pc` is what its end is
  /// set to; nothing while nobody has it open: what arrives then is lost.
  Bytes Advance(Seconds now, const std::optional<LineSettings>& pc);
  /// When Advance is wanted next; nothing while the line is silent.
  std::optional<Seconds> NextEvent() const;

 private:
  struct Incoming {
    Seconds due = 0;
    char character = 0;
    LineSettings pc;
  };
  struct Outgoing {
    Seconds due = 0;
    Bytes character;
    LineSettings from;
  };

  static constexpr std::size_t kAhead = 256;

  Seconds Duration(const LineSettings& line) const { return paced_ ? CharacterTime(line) : 0; }
  std::optional<Seconds> NextDeparture() const;

  Endpoint& end_;
  bool paced_;
  std::deque<Incoming> incoming_;
  std::optional<Outgoing> outgoing_;
  Seconds endIdleSince_ = 0;
};

}  // namespace ox::sim
