// State machine of the text dialogue.
#include "simulator/device/dialogue.h"

#include "platform/line_ends.h"
#include "simulator/line/endpoint.h"

namespace ox::sim {
namespace {

constexpr char kWakeUp = 'S';
constexpr char kReady[] = "A";
constexpr BytesView kUpdateRequest = "S@UPDATEREQ\r";

// Silence that makes an "S" a wake-up.
constexpr double kPauseInCharacters = 2;
// Far above any request; a line that runs on without end is cut here and refused.
constexpr size_t kLongestText = 80;
// Letter, preset and CR; the preset can be any character, CR included.
constexpr size_t kPowerRequestSize = 3;

bool IsComplete(BytesView request) {
  switch (request.front()) {
    case 'K':
    case 'P':
    case 'T':
      return true;
    case '>':
      return request.size() >= kPowerRequestSize;
    default:
      return request.back() == kCr || request.size() >= kLongestText;
  }
}

}  // namespace

std::optional<Seconds> Dialogue::WakeUpDue() const {
  if (state_ != State::kWaking) return std::nullopt;
  return wakeUpDue_;
}

void Dialogue::Settle(Seconds now) {
  if (state_ != State::kWaking || now < wakeUpDue_) return;
  state_ = State::kAwake;
  text_.clear();
  for (const TimedReply& reply : faults_.Apply({ReplyStage::kDialogueWakeUp, '\0'}, kReady, wakeUpDue_)) {
    output_.Add(reply.due, reply.bytes);
  }
}

void Dialogue::Sleep() {
  state_ = State::kAsleep;
  text_.clear();
}

bool Dialogue::Receive(char character, Seconds characterTime, Seconds now) {
  Settle(now);
  if (now - last_ > (text_.empty() ? kPatience : Endpoint::kTextSilence)) Sleep();
  last_ = now;
  switch (state_) {
    case State::kAsleep:
      if (character == kWakeUp) BeginWakeUp(characterTime, now);
      // Any other character ends the dialogue before: "A" and "N" say so, and nothing else belongs here.
      output_.Clear();
      return false;
    case State::kAwake:
      TakeRequest(character, characterTime, now);
      return false;
    case State::kWaking:
    case State::kText:
      break;
  }
  state_ = State::kText;
  text_ += character;
  const bool complete = text_ == kUpdateRequest;
  if (character == kCr || text_.size() >= kLongestText) Sleep();
  return complete;
}

void Dialogue::TakeDamaged(Seconds now) {
  Settle(now);
  last_ = now;
  Sleep();
  output_.Clear();
}

void Dialogue::BeginWakeUp(Seconds characterTime, Seconds now) {
  state_ = State::kWaking;
  text_ = kWakeUp;
  wakeUpDue_ = now + kPauseInCharacters * characterTime;
}

void Dialogue::TakeRequest(char character, Seconds characterTime, Seconds now) {
  if (text_.empty() && character == kWakeUp) return BeginWakeUp(characterTime, now);
  // The PC did not accept the answer to the wake-up, or has no request.
  if (text_.empty() && (character == 'A' || character == 'N')) return Sleep();
  text_ += character;
  if (IsComplete(text_)) Reply(now);
}

void Dialogue::Reply(Seconds now) {
  const Bytes request = text_;
  Sleep();
  Seconds due = now + kThinkingTime;
  for (const Bytes& line : answer_(request, now)) {
    const auto fault = faults_.Next({ReplyStage::kDialogueReply, request.front()});
    for (const TimedReply& reply : ReplyFaults::Spoil(fault, line, due)) output_.Add(reply.due, reply.bytes);
    // The first character of the next line comes behind the last of this one, as far as any other.
    if (fault && fault->kind == ReplyFault::Kind::kSplit)
      due += fault->delay * static_cast<double>(line.size());
  }
}

}  // namespace ox::sim
