// A far end that answers word for word what the test wrote down.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <utility>
#include <vector>

#include "simulator/endpoint.h"

namespace ox::test {

/// Waits for its expected texts in their order and answers each; anything else that is sent is kept in
/// `unexpected`.
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

  /// True when every expected text came.
  bool Done() const { return steps_.empty(); }
  const Bytes& Unexpected() const { return unexpected_; }

  void Receive(BytesView bytes, const sim::LineSettings& pc, sim::Seconds now) override {
    if (!sim::Fits(line_, pc)) return;
    heard_ += bytes;
    if (steps_.empty() || !steps_.front().first.starts_with(heard_)) {
      unexpected_ += std::exchange(heard_, {});
    } else if (steps_.front().first == heard_) {
      for (const Piece& piece : steps_.front().second) output_.push_back({now + piece.delay, piece.bytes});
      steps_.pop_front();
      heard_.clear();
    }
  }

  std::optional<sim::Seconds> NextOutput() const override {
    return output_.empty() ? std::nullopt : std::optional(output_.front().delay);
  }

  Bytes TakeSome(sim::Seconds now, std::size_t most) override {
    Bytes taken;
    while (!output_.empty() && output_.front().delay <= now && taken.size() < most) {
      Bytes& bytes = output_.front().bytes;
      const Bytes part = bytes.substr(0, most - taken.size());
      taken += part;
      bytes.erase(0, part.size());
      if (bytes.empty()) output_.pop_front();
    }
    return taken;
  }

  sim::LineSettings Line() const override { return line_; }

 private:
  sim::LineSettings line_;
  std::deque<std::pair<Bytes, std::vector<Piece>>> steps_;
  std::deque<Piece> output_;  // with the time due in `delay`
  Bytes heard_;
  Bytes unexpected_;
};

}  // namespace ox::test
