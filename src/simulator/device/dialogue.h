// The device's side of the text dialogue: wake-up, request, reply lines.
#pragma once

#include <functional>
#include <optional>

#include "simulator/device/polls.h"
#include "simulator/device/reply_faults.h"
#include "simulator/line/output_queue.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// Sleeps until "S", answers "A", takes one request, answers it and sleeps again. What the PC says after the
/// reply ("A", "N") is taken silently and ends a reply that still runs.
class Dialogue {
 public:
  /// Gives the reply lines to a complete request.
  using Answer = std::function<ReplyLines(BytesView request, Seconds now)>;

  /// How long a request is awaited behind the answer to a wake-up. One that was begun is forgotten after
  /// Endpoint::kTextSilence.
  static constexpr Seconds kPatience = 5;
  /// From the end of a request to the first character of its reply.
  static constexpr Seconds kThinkingTime = 0.002;

  /// Faults and output belong to the device and must outlive the dialogue.
  Dialogue(Answer answer, ReplyFaults& faults, OutputQueue& output)
      : answer_(std::move(answer)), faults_(faults), output_(output) {}

  /// Takes one character, at a line on which a character lasts characterTime. True when it completes the
  /// request for an update; nothing is answered to that here.
  bool Receive(char character, Seconds characterTime, Seconds now);

  /// Takes a character that arrived damaged: the request that it belongs to is forgotten, and a reply that
  /// still runs ends.
  void TakeDamaged(Seconds now);

  /// When the answer to a wake-up is due; nothing when there is none. It comes only after a pause, since a
  /// text that goes on at once is no wake-up.
  std::optional<Seconds> WakeUpDue() const;
  /// Puts the answer to a wake-up that is due by now into the output.
  void Settle(Seconds now);

  /// Forgets everything: the device was switched off, or its loader has taken over.
  void Sleep();

 private:
  enum class State { kAsleep, kWaking, kText, kAwake };

  void BeginWakeUp(Seconds characterTime, Seconds now);
  void TakeRequest(char character, Seconds characterTime, Seconds now);
  void Reply(Seconds now);

  Answer answer_;
  ReplyFaults& faults_;
  OutputQueue& output_;
  State state_ = State::kAsleep;
  Bytes text_;  // of the request, or of the text that began with "S"
  Seconds wakeUpDue_ = 0;
  Seconds last_ = 0;
};

}  // namespace ox::sim
