// The far end of fuzzed sessions and updates.
#pragma once

#include "harness.h"
#include "simulator/device/device.h"

namespace ox {

/// A device that hears nothing but what it may be told, and answers as the input says.
class WatchedDevice : public sim::Device {
 public:
  using Device::Device;

  void Receive(BytesView bytes, const sim::LineSettings& pc, sim::Seconds now) override {
    constexpr BytesView kTold[] = {"S",
                                   "A",
                                   "N",
                                   "K",
                                   "P",
                                   "T",
                                   "S@UPDATEREQ\r",
                                   ">_\r",
                                   "J___ ______________\r",
                                   "Z___ 00000000: 0000\r",
                                   "*000 000000 0000\r",
                                   "#00000000: 0000 _ _~~~~ \r"};
    Require(pc == sim::kLoaderLine
                ? bytes == "S" || bytes == "N" || IsFrame(bytes)
                : std::ranges::any_of(kTold, [&](BytesView told) { return Looks(bytes, told); }));
    if (bytes == "S") answer_ = said_;
    said_.clear();
    Device::Receive(bytes, pc, now);
  }

  Bytes TakeSome(sim::Seconds now, std::size_t most) override {
    Bytes piece = Device::TakeSome(now, most);
    if (said_.empty()) said_ = piece;
    return piece;
  }

  /// Spoils a later reply: it is late, cut up, doubled, lost or another one, as the input says.
  void Spoil(BytesView& input) {
    constexpr sim::Seconds kDelays[] = {0, 0.03, 0.4, 2};
    const unsigned how = TakeByte(input);
    sim::ReplyFault fault;
    fault.kind = static_cast<sim::ReplyFault::Kind>(how % 7);
    fault.requestLost = how / 7 % 2 != 0;
    fault.delay = kDelays[how / 14 % 4];
    fault.which.nth = static_cast<int>(TakeByte(input) + how / 56 * 128);
    fault.text = TakeText(input);
    Faults().Add(fault);
  }

 private:
  /// A sound frame. Blocks go out in their order and each once; they and the end follow a plain yes.
  bool IsFrame(BytesView bytes) {
    const bool block = bytes.starts_with('P');
    if (bytes.size() != (block ? 264 : 8) || BytesView("VWabc012PLX").find(bytes[0]) == BytesView::npos)
      return false;
    unsigned sum = 0;
    for (const char byte : bytes.substr(0, 8)) sum += ByteValue(byte);
    const unsigned last = block ? std::exchange(lastBlock_, ByteValue(bytes[4])) : 0;
    return sum % 256 == 0 && bytes.substr(1, 3) == BytesView("\x13\x58\0", 3) &&
           (!block || lastBlock_ == 0 || lastBlock_ == last + 1) &&
           (answer_ == "A" || !(block || bytes.starts_with('L')));
  }

  unsigned lastBlock_ = 0;
  Bytes said_;    // the first piece since the PC said something
  Bytes answer_;  // the same to what the PC said before its wake-up
};

}  // namespace ox
