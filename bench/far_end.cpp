// Waiting for the program's characters without a detour.
#include "bench/far_end.h"

#include <poll.h>

#include <utility>

namespace ox::bench {
namespace {

constexpr int kLookRoundMilliseconds = 100;  // whether the far end is wanted any more

}  // namespace

FarEnd::~FarEnd() {
  done_ = true;
  if (thread_.joinable()) thread_.join();
}

void FarEnd::Answer(std::function<void(BytesView arrived)> answer) {
  thread_ = std::thread([this, answer = std::move(answer)] { Listen(answer); });
}

void FarEnd::Finish() {
  while (line_.Waiting() && !done_) {
    pollfd output{line_.Descriptor(), POLLOUT, 0};
    poll(&output, 1, kLookRoundMilliseconds);
    line_.Flush();
  }
}

void FarEnd::Listen(const std::function<void(BytesView arrived)>& answer) {
  while (!done_) {
    pollfd input{line_.Descriptor(), POLLIN, 0};
    if (poll(&input, 1, kLookRoundMilliseconds) > 0) answer(line_.Read());
  }
}

}  // namespace ox::bench
