// Faults in what the simulated device answers: each spoils chosen replies on their way to the line.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/bytes.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// Characters that leave the device at a point in time.
struct TimedReply {
  Seconds due = 0;
  Bytes bytes;
};

/// The occasions on which the device says something.
enum class ReplyStage {
  kDialogueWakeUp,         ///< the "A" to the "S" of the text dialogue
  kDialogueReply,          ///< a reply line, or a bare "N" or "R", to a request of the text dialogue
  kUpdateAcknowledgement,  ///< the line by which the device says that its loader runs
  kLoaderWakeUp,           ///< the "A" to the "S" before a block frame
  kLoaderReply             ///< the "A" or "N" to a block frame
};

/// What a reply answers.
struct ReplyOrigin {
  ReplyStage stage = ReplyStage::kLoaderReply;
  char letter = '\0';  ///< first letter of the request that is answered; NUL where the stage tells everything
};

/// Which replies a fault strikes: of those that fit stage and letter (each "any" when left out), counted from
/// 0 and from the moment the fault was added, the replies number nth to nth + times - 1.
struct ReplySelection {
  std::optional<ReplyStage> stage = std::nullopt;
  std::optional<char> letter = std::nullopt;
  int nth = 0;
  int times = 1;
};

/// One fault. A refused block is kReplaced with text "N" and requestLost, a swallowed one kSilence and
/// requestLost; an acknowledgement that goes missing after the block was written is kSilence alone.
struct ReplyFault {
  enum class Kind {
    kSilence,            ///< nothing comes
    kReplaced,           ///< text comes instead: a refusal, another character, a wrong acknowledgement
    kDoubled,            ///< the reply comes twice in one piece
    kNoiseBefore,        ///< text comes first and the reply delay seconds later; at 0 both in one piece
    kLastCharacterLost,  ///< the reply comes without its last character, so a line comes without its CR
    kLate,               ///< the reply comes delay seconds later
    kSplit               ///< every further character of the reply comes delay seconds after the one before
  };

  ReplySelection which = {};
  Kind kind = Kind::kSilence;
  Bytes text = {};           ///< for kReplaced and kNoiseBefore
  Seconds delay = 0;         ///< for NoiseBefore, Late and Split
  bool requestLost = false;  ///< the device does not carry out the request either
};

/// The faults that are switched on. Everything the device says passes through here once.
class ReplyFaults {
 public:
  /// Switches a fault on in addition to the others. Where several strike one reply, the first added counts.
  void Add(ReplyFault fault);

  /// Switches all faults off, also those that have not struck yet.
  void Clear() { pending_.clear(); }

  /// Tells the observer of every reply before it is spoiled, so that a test learns what there is to break.
  void Observe(std::function<void(const ReplyOrigin&)> observer) { observer_ = std::move(observer); }

  /// Counts the device's next reply and returns the fault that strikes it. To be called once for each reply,
  /// before the request is carried out, by a caller that heeds requestLost; the reply then goes through
  /// Spoil.
  std::optional<ReplyFault> Next(const ReplyOrigin& origin);

  /// What leaves the device, in order of time, when the reply is given now and the fault strikes it (or none
  /// does).
  static std::vector<TimedReply> Spoil(const std::optional<ReplyFault>& fault, Bytes reply, Seconds now);

  /// Next and Spoil in one, for replies whose request has no effect in the device.
  std::vector<TimedReply> Apply(const ReplyOrigin& origin, Bytes reply, Seconds now);

 private:
  struct Pending {
    ReplyFault fault;
    int seen = 0;  // replies so far that fit stage and letter
  };

  std::vector<Pending> pending_;
  std::function<void(const ReplyOrigin&)> observer_;
};

}  // namespace ox::sim
