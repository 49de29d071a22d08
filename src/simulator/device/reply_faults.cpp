// Choosing the fault that strikes a reply, and spoiling the reply.
#include "simulator/device/reply_faults.h"

#include <utility>

namespace ox::sim {
namespace {

bool Fits(const ReplySelection& which, const ReplyOrigin& origin) {
  return which.stage.value_or(origin.stage) == origin.stage &&
         which.letter.value_or(origin.letter) == origin.letter;
}

std::vector<TimedReply> SplitUp(const Bytes& reply, Seconds now, Seconds delay) {
  std::vector<TimedReply> pieces;
  for (const char byte : reply) {
    pieces.push_back({now, Bytes(1, byte)});
    now += delay;
  }
  return pieces;
}

}  // namespace

void ReplyFaults::Add(ReplyFault fault) {
  pending_.push_back({std::move(fault)});
}

std::optional<ReplyFault> ReplyFaults::Next(const ReplyOrigin& origin) {
  if (observer_) observer_(origin);
  std::optional<ReplyFault> striking;
  for (Pending& pending : pending_) {
    const ReplySelection& which = pending.fault.which;
    if (!Fits(which, origin)) continue;
    const int number = pending.seen++;
    if (!striking && number >= which.nth && number - which.nth < which.times) striking = pending.fault;
  }
  return striking;
}

std::vector<TimedReply> ReplyFaults::Spoil(const std::optional<ReplyFault>& fault, Bytes reply, Seconds now) {
  if (!fault) return {{now, std::move(reply)}};
  switch (fault->kind) {
    case ReplyFault::Kind::kSilence:
      return {};
    case ReplyFault::Kind::kReplaced:
      return {{now, fault->text}};
    case ReplyFault::Kind::kDoubled:
      return {{now, reply + reply}};
    case ReplyFault::Kind::kNoiseBefore:
      if (fault->delay > 0) return {{now, fault->text}, {now + fault->delay, std::move(reply)}};
      return {{now, fault->text + reply}};
    case ReplyFault::Kind::kLastCharacterLost:
      return {{now, reply.substr(0, reply.empty() ? 0 : reply.size() - 1)}};
    case ReplyFault::Kind::kLate:
      return {{now + fault->delay, std::move(reply)}};
    case ReplyFault::Kind::kSplit:
      return SplitUp(reply, now, fault->delay);
  }
  return {};
}

std::vector<TimedReply> ReplyFaults::Apply(const ReplyOrigin& origin, Bytes reply, Seconds now) {
  return Spoil(Next(origin), std::move(reply), now);
}

}  // namespace ox::sim
