// A simulated modem: takes an office code and measured values, and sends them on when it is told to.
#pragma once

#include <optional>
#include <vector>

#include "simulator/line/endpoint.h"
#include "simulator/line/output_queue.h"

namespace ox::sim {

/// The settings of a modem and how it answers.
struct ModemOptions {
  LineSettings line;            ///< the dialogue's settings
  bool wakes = true;            ///< answers the wake-up
  std::optional<Bytes> answer;  ///< to every record, in place of its own; empty: silence
  Seconds burstPeriod = 0;      ///< sends what it holds every so many seconds; 0: only when told to
};

/// Wake-up "S", answered "A"; then one record ended by CR, answered "A" when it is sound, else "NR".
class SimulatedModem : public Endpoint {
 public:
  explicit SimulatedModem(ModemOptions options);

  void Receive(BytesView bytes, const LineSettings& pc, Seconds now) override;
  std::optional<Seconds> NextOutput() const override;
  Bytes TakeSome(Seconds now, std::size_t most) override;
  LineSettings Line() const override { return options_.line; }

  /// The PC has dropped its modem control line: the order to send. A burst of lines follows, one for each
  /// record that is held, with a line before and one after them.
  void DropModemLine(Seconds now);

  /// The records taken so far, each without its CR.
  const std::vector<Bytes>& Records() const { return records_; }

 private:
  void ReceiveCharacter(char character, Seconds now);
  void TakeRecord(Seconds now);

  ModemOptions options_;
  OutputQueue output_;
  bool awake_ = false;
  Bytes text_;
  Seconds last_ = 0;  // when a character came
  std::vector<Bytes> records_;
  Seconds nextBurst_ = 0;
};

}  // namespace ox::sim
