// A far end that answers word for word what the test wrote down.
#pragma once

#include <deque>
#include <utility>
#include <vector>

#include "simulator/line/endpoint.h"
#include "simulator/line/output_queue.h"

namespace ox::test {

class ScriptedDevice : public sim::Endpoint {
 public:
  /// One piece of an answer, so many seconds after the request.
  struct Piece {
    double delay;
    Bytes bytes;
  };

  explicit ScriptedDevice(sim::LineSettings line = {9600, 'O', 7}) : line_(line) {}

  ScriptedDevice& Expect(Bytes request, std::vector<Piece> answer = {}) {
    steps_.emplace_back(std::move(request), std::move(answer));
    return *this;
  }
  ScriptedDevice& Expect(Bytes request, const Bytes& answer) {
    return Expect(std::move(request), {{0, answer}});
  }

  /// Says this unasked, the delays counted from `now` on.
  void Say(const std::vector<Piece>& pieces, sim::Seconds now = 0) {
    for (const auto& [delay, bytes] : pieces) output_.Add(now + delay, bytes);
  }

  /// True when every expected text came, and nothing else.
  bool Done() const { return steps_.empty() && !surprised_; }

  void Receive(BytesView received, const sim::LineSettings& pc, sim::Seconds now) override {
    if (pc != line_) return;
    heard_ += received;
    if (steps_.empty() || !steps_.front().first.starts_with(heard_)) {
      surprised_ = true;
      heard_.clear();
    } else if (steps_.front().first == heard_) {
      Say(steps_.front().second, now);
      steps_.pop_front();
      heard_.clear();
    }
  }

  std::optional<sim::Seconds> NextOutput() const override { return output_.Next(); }
  Bytes TakeSome(sim::Seconds now, std::size_t most) override { return output_.Take(now, most); }
  sim::LineSettings Line() const override { return line_; }

 private:
  sim::LineSettings line_;
  std::deque<std::pair<Bytes, std::vector<Piece>>> steps_;
  sim::OutputQueue output_;
  Bytes heard_;
  bool surprised_ = false;
};

}  // namespace ox::test
