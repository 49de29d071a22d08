// Attempts, breaks, and what must hold after each.
#include "programming/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>

#include "programming/loader_requests.h"

namespace ox::test {
namespace {

using Kind = sim::ReplyFault::Kind;
using Strings = std::vector<std::string>;

const std::string kPortMessage = "COM1: lässt sich nicht öffnen!";
constexpr double kTooLate = 35;  // seconds, longer than any time-out
constexpr double kPause = 40;    // between two attempts: the latest reply has come, any frame is forgotten

bool OfLoader(sim::ReplyStage stage) {
  return stage != sim::ReplyStage::DialogueWakeUp && stage != sim::ReplyStage::DialogueReply;
}

}  // namespace

struct Sweep::Break {
  const char* name;
  std::optional<sim::ReplyFault> fault;  // none: the port goes
  bool refusal = false;
};

const std::vector<Sweep::Break>& Sweep::Breaks() {
  static const std::vector<Break> kBreaks{
      {"request lost", sim::ReplyFault{.which = {}, .kind = Kind::Silence, .requestLost = true}},
      {"reply lost", sim::ReplyFault{.which = {}, .kind = Kind::Silence}},
      {"refused", sim::ReplyFault{.which = {}, .kind = Kind::Replaced, .text = "N", .requestLost = true},
       true},
      {"another character", sim::ReplyFault{.which = {}, .kind = Kind::Replaced, .text = "\xC1"}},
      {"twice", sim::ReplyFault{.which = {}, .kind = Kind::Doubled}},
      {"noise before", sim::ReplyFault{.which = {}, .kind = Kind::NoiseBefore, .text = "\xFF"}},
      {"too late", sim::ReplyFault{.which = {}, .kind = Kind::Late, .delay = kTooLate}},
      {"port gone", std::nullopt}};
  return kBreaks;
}

void Sweep::Connect(const sim::DeviceOptions& device) {
  device_ = std::make_unique<sim::Device>(device);
  host_.ports.Connect(1, device_.get());
}

Strings Sweep::Attempt() {
  host_.ports.ForgetSent();
  procedure_.start.Click();
  Strings messages = host_.windows.TakeMessages();
  EXPECT_EQ(host_.ports.OpenCount(), 0);
  EXPECT_TRUE(procedure_.window.IsOpen());
  for (const Control* control : procedure_.window.Controls())
    EXPECT_TRUE(control->Enabled()) << control->Name();
  const bool success = std::ranges::count(messages, procedure_.success) > 0;
  EXPECT_TRUE(!success || procedure_.written(*device_));
  const std::size_t sent = host_.ports.Sent().size();
  host_.windows.Pass(kPause);
  EXPECT_EQ(host_.ports.Sent().size(), sent);
  return messages;
}

void Sweep::ExpectWholeAttempt() {
  EXPECT_EQ(Attempt(), Strings{procedure_.success});
}

std::vector<Sweep::Reply> Sweep::RunClean(const sim::DeviceOptions& device) {
  Connect(device);
  std::vector<Reply> replies;
  std::map<char, int> seen;
  device_->Faults().Observe([&](const sim::ReplyOrigin& origin) {
    const bool acknowledgement = origin.stage == sim::ReplyStage::UpdateAcknowledgement;
    const char letter = acknowledgement ? kUpdateRequest : origin.letter;
    replies.push_back({origin.stage, letter, 0});
    if (origin.stage != sim::ReplyStage::LoaderReply) return;
    replies.back().before = seen[letter]++;
    Reply& wakeUp = replies[replies.size() - 2];
    wakeUp.letter = letter;
    wakeUp.before = replies.back().before;
  });
  ExpectWholeAttempt();
  device_->Faults().Observe(nullptr);
  return replies;
}

void Sweep::BreakReplies(const sim::DeviceOptions& device, std::size_t most, int blockStride) {
  const std::vector<Reply> replies = RunClean(device);
  std::size_t broken = 0;
  for (std::size_t index = 0; index < replies.size() && broken < most; ++index) {
    const Reply& reply = replies[index];
    const bool passedOver =
        reply.letter == request::kWriteTables.letter && (reply.before + 1) % blockStride != 0;
    if (!OfLoader(reply.stage) || passedOver) continue;
    ++broken;
    for (const Break& how : Breaks()) {
      Connect(device);
      BreakReply(replies, index, how);
      if (testing::Test::HasFailure()) {
        FAIL() << "reply " << index << " to " << reply.letter << ' ' << reply.before << ": " << how.name;
      }
    }
  }
  EXPECT_GT(broken, 0U);
}

void Sweep::BreakReply(const std::vector<Reply>& replies, std::size_t index, const Break& how) {
  std::size_t count = 0;
  if (how.fault) {
    sim::ReplyFault fault = *how.fault;
    fault.which.nth = static_cast<int>(index);
    device_->Faults().Add(fault);
  } else {
    device_->Faults().Observe([&](const sim::ReplyOrigin&) {
      if (count++ == index) host_.ports.Break();
    });
  }
  const Strings messages = Attempt();

  const Reply& reply = replies[index];
  const Consequence consequence = procedure_.afterBadReply(reply.letter, reply.before);
  const bool passes = consequence.refusalPasses && how.refusal && reply.stage == sim::ReplyStage::LoaderReply;
  const std::string expected = !how.fault ? kPortMessage : passes ? procedure_.success : consequence.message;
  const bool wentOn = consequence.mayGoOn && how.fault && messages == Strings{procedure_.success};
  if (!wentOn) {
    EXPECT_EQ(messages, Strings{expected});
  }

  host_.ports.Mend();
  device_->Faults().Observe(nullptr);
  device_->Faults().Clear();
  if (procedure_.findsRunningLoader || !device_->LoaderRunning()) ExpectWholeAttempt();
}

void Sweep::CutLine(const sim::DeviceOptions& device, std::size_t most, std::size_t stride,
                    std::size_t wholeEvery) {
  Connect(device);
  ExpectWholeAttempt();
  const std::size_t end = std::min(most, host_.ports.Sent().size());
  const bool sameDevice = device.startInLoader && procedure_.findsRunningLoader;
  Connect(device);
  for (std::size_t cut = 0, cuts = 1; cut < end; cut += stride, ++cuts) {
    host_.ports.BreakAfterSending(cut);
    const Strings messages = Attempt();
    EXPECT_EQ(host_.ports.Sent().size(), cut);
    EXPECT_EQ(std::ranges::count(messages, procedure_.success), 0);
    // A port that goes during the connection test is that test's affair; the procedure ends all the same.
    EXPECT_EQ(messages.empty() ? "" : messages.front(), kPortMessage);
    host_.ports.Mend();
    const bool whole = cuts % wholeEvery == 0;
    if (whole && (procedure_.findsRunningLoader || !device_->LoaderRunning())) ExpectWholeAttempt();
    if (whole || !sameDevice) Connect(device);
    if (testing::Test::HasFailure()) FAIL() << "cut after " << cut << " characters";
  }
}

}  // namespace ox::test
