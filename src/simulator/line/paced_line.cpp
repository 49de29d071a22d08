// Carrying characters across in the order of their times.
#include "simulator/line/paced_line.h"

#include <algorithm>

#include "simulator/line/crossing.h"

namespace ox::sim {

void PacedLine::FromPc(BytesView bytes, const LineSettings& pc, Seconds now) {
  if (!incoming_.empty()) now = std::max(now, incoming_.back().due);
  for (const char byte : bytes) {
    now += Duration(pc);
    incoming_.push_back({now, byte, pc});
  }
}

// When the end's next character arrives or, with none on its way, begins.
std::optional<Seconds> PacedLine::NextDeparture() const {
  if (outgoing_) return outgoing_->due;
  const auto next = end_.NextOutput();
  if (!next) return std::nullopt;
  return std::max(*next, endIdleSince_);
}

std::optional<Seconds> PacedLine::NextEvent() const {
  const auto departure = NextDeparture();
  if (incoming_.empty()) return departure;
  return departure ? std::min(*departure, incoming_.front().due) : incoming_.front().due;
}

Bytes PacedLine::Advance(Seconds now, const std::optional<LineSettings>& pc) {
  Bytes arrived;
  for (auto next = NextEvent(); next && *next <= now; next = NextEvent()) {
    if (!incoming_.empty() && incoming_.front().due <= *next) {
      const Incoming taken = incoming_.front();
      incoming_.pop_front();
      end_.Receive(BytesView(&taken.character, 1), taken.pc, taken.due);
    } else if (outgoing_) {
      if (pc) arrived += CrossToPc(outgoing_->character, outgoing_->from, *pc);
      endIdleSince_ = outgoing_->due;
      outgoing_.reset();
    } else {
      const LineSettings from = end_.Line();
      outgoing_ = Outgoing{*next + Duration(from), end_.TakeSome(*next, 1), from};
    }
  }
  return arrived;
}

}  // namespace ox::sim
