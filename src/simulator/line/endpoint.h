// The far end of a serial line: what a device and a modem have in common.
#pragma once

#include <cstddef>
#include <optional>

#include "platform/bytes.h"
#include "simulator/line/line_settings.h"
#include "simulator/line/seconds.h"

namespace ox::sim {

/// Bytes in, bytes out, the time given from outside.
class Endpoint {
 public:
  /// Silence after which an end forgets a text that was begun. Far above a pause within a text, and below the
  /// half second after which the PC's next wake-up can come.
  static constexpr Seconds kTextSilence = 0.25;

  Endpoint() = default;
  Endpoint(const Endpoint&) = delete;
  Endpoint& operator=(const Endpoint&) = delete;
  virtual ~Endpoint() = default;

  /// What the PC put on the line, with the PC's settings; an end whose own settings do not fit understands
  /// nothing.
  virtual void Receive(BytesView bytes, const LineSettings& pc, Seconds now) = 0;
  /// When the next output is due; nothing while the end has nothing to say.
  virtual std::optional<Seconds> NextOutput() const = 0;
  /// The output that is due by now, in its order.
  Bytes TakeOutput(Seconds now) { return TakeSome(now, Bytes::npos); }
  /// The first characters of it, at most so many. What is not taken yet may still be dropped by the end.
  virtual Bytes TakeSome(Seconds now, std::size_t most) = 0;
  /// The end's present settings.
  virtual LineSettings Line() const = 0;

  /// A program at the PC has opened the port, or left it.
  virtual void PortOpened(Seconds /*now*/) {}
  virtual void PortClosed(Seconds /*now*/) {}
  /// When the cable is pulled at this end; nothing while nobody pulls it.
  virtual std::optional<Seconds> NextUnplugging() const { return std::nullopt; }
  /// It was pulled, for whatever reason.
  virtual void Unplugged(Seconds /*now*/) {}
};

}  // namespace ox::sim
