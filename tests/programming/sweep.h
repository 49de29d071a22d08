// Breaks an update procedure wherever it can break, one break per attempt.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/window.h"
#include "simulator/device.h"
#include "support/test_host.h"

namespace ox::test {

/// What a bad reply, or none, to a request leads to.
struct Consequence {
  std::string message;         // that the user reads; the success message where the reply does not matter
  bool refusalPasses = false;  // "N" is as good as "A" here
  bool mayGoOn = false;        // success is right as well: a later query can stand in for this one
};

/// An update procedure that is ready to be started, and what is known of it.
struct SweptProcedure {
  Window& window;
  Button& start;
  std::string success;
  /// Whether the device holds what was to be written.
  std::function<bool(const sim::Device&)> written;
  /// Of the request with this letter that `before` others with the same letter went ahead of; kUpdateRequest
  /// for the way into the loader.
  std::function<Consequence(char letter, int before)> afterBadReply;
  /// Whether a new attempt finds a device that was left in its loader; else it gets a new device.
  bool findsRunningLoader = true;
};

class Sweep {
 public:
  static constexpr char kUpdateRequest = '@';

  Sweep(TestHost& host, SweptProcedure procedure) : host_(host), procedure_(std::move(procedure)) {}

  /// Breaks the first `most` replies of the loader, one after the other, in every way: silence, refusal,
  /// other characters, too many, too late, the port gone. Of the blocks it takes every `blockStride`-th. Each
  /// attempt begins with a new device.
  void BreakReplies(const sim::DeviceOptions& device, std::size_t most = Bytes::npos, int blockStride = 1);

  /// Cuts the line before the first character that is sent, the second and so on up to `most`, each time
  /// `stride` further. The attempts follow one another on one device where the procedure allows it, so that
  /// each shows that device and window got over the cut before. After every `wholeEvery` cuts comes an
  /// attempt that nothing disturbs.
  void CutLine(const sim::DeviceOptions& device, std::size_t most, std::size_t stride,
               std::size_t wholeEvery);

 private:
  /// One reply of a clean run.
  struct Reply {
    sim::ReplyStage stage;
    char letter;  // of the request that it belongs to, also where it answers the wake-up before it
    int before;
  };
  struct Break;

  static const std::vector<Break>& Breaks();
  void Connect(const sim::DeviceOptions& device);
  /// The replies of a run in which nothing breaks.
  std::vector<Reply> RunClean(const sim::DeviceOptions& device);
  void BreakReply(const std::vector<Reply>& replies, std::size_t index, const Break& how);
  /// The messages of one attempt, after which everything must stand as before it.
  std::vector<std::string> Attempt();
  void ExpectWholeAttempt();

  TestHost& host_;
  SweptProcedure procedure_;
  std::unique_ptr<sim::Device> device_;
};

}  // namespace ox::test
