// A simulated Orvanexe: its line, its text dialogue, its loader and what it holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

#include "simulator/device/device_memory.h"
#include "simulator/device/dialogue.h"
#include "simulator/device/loader.h"
#include "simulator/device/polls.h"
#include "simulator/device/power_supply.h"
#include "simulator/device/reply_faults.h"
#include "simulator/device/reply_shape.h"
#include "simulator/device/station_data.h"
#include "simulator/line/crossing.h"
#include "simulator/line/endpoint.h"
#include "simulator/line/output_queue.h"

namespace ox::sim {

/// The properties of a device. The defaults are a sound OX 3.
struct DeviceOptions {
  int generation = 3;                 ///< 1 to 3
  unsigned baud = 9600;               ///< of the dialogue; the loader has its own
  char parity = 'O';                  ///< of the dialogue: 'O' or 'E'
  Bytes type;                         ///< 4 characters of the identification; empty: "OX 1" to "OX 3"
  Bytes version = "SW 3.20 11/2026";  ///< of the factory's program, up to 16 characters
  bool identificationCut = false;     ///< its last character is missing in front of the CR
  Bytes powerStatus;                  ///< what generation III tells in place of its own status; empty: that
  std::optional<Bytes>
      loaderKinds;             ///< kind queries that the loader accepts, out of "abc"; else the generation's
  bool startInLoader = false;  ///< switched on with its arrow keys held
  bool rubbishWhenUnfit = false;              ///< answers rubbish, not silence, to a PC with other settings
  std::uint32_t seed = 1;                     ///< of the measured values and of the rubbish
  Bytes tables;                               ///< image that its table memory begins with; empty: erased
  ReplyShape replies;                         ///< to polls
  std::optional<std::size_t> switchOffAfter;  ///< goes off once, when it has heard so many characters
  Bytes memory;  ///< what DeviceMemory::Contents gave before; of another size: as from the factory
  std::int64_t clockStart = 0;  ///< the device's own date and time at time 0, in seconds since 1970
};

/// Whether such a device keeps the older table image, not the one of generation III.
bool KeepsOlderImage(const DeviceOptions& options);

/// How many bytes DeviceMemory::Contents of such a device has.
std::size_t MemorySize(const DeviceOptions& options);

/// The device as one end of a line. Replies happen at the times given.
class Device : public Endpoint {
 public:
  explicit Device(DeviceOptions options);

  void Receive(BytesView bytes, const LineSettings& pc, Seconds now) override;
  std::optional<Seconds> NextOutput() const override;
  Bytes TakeSome(Seconds now, std::size_t most) override;
  LineSettings Line() const override;

  /// How long it stays off when DeviceOptions::switchOffAfter has switched it off.
  static constexpr Seconds kOff = 3;
  static constexpr Seconds kForever = std::numeric_limits<Seconds>::infinity();

  /// Off: it hears nothing and says nothing, until it goes on by itself at that time. Its memory stays.
  void SwitchOff(Seconds until = kForever);
  /// On, as if it were new but for its memory: without a sound program only its loader starts.
  void SwitchOn();
  bool On(Seconds now) const { return !offUntil_ || now >= *offUntil_; }

  bool LoaderRunning() const { return loader_->Running(); }
  const DeviceMemory& Memory() const { return memory_; }
  /// What it answers polls from: the tables in its memory, or none at all while they are not sound.
  const StationData& Stations() const { return stations_; }
  PowerSupply& Power() { return power_; }
  ReplyFaults& Faults() { return faults_; }

 private:
  void Listen(BytesView bytes, const LineSettings& pc, Seconds now);
  void Hear(const HeardCharacter& heard, Seconds now);
  void TakeLoader(BytesView piece, Seconds now);
  void EnterLoader(Seconds now);
  void TakeOverTables();
  ReplyLines Answer(BytesView request, Seconds now);
  ReplyLines AnswerPoll(BytesView request, Seconds now);
  Bytes Identification() const;
  ReplyLines AnswerPower(BytesView request, Seconds now);

  DeviceOptions options_;
  DeviceMemory memory_;
  ReplyFaults faults_;
  OutputQueue output_;
  std::optional<Loader> loader_;    // made anew when the device goes on
  bool loaderHasLastWord_ = false;  // it has ended, but its reply still goes out at its settings
  Dialogue dialogue_;
  Polls polls_;
  PowerSupply power_;
  StationData stations_;
  std::mt19937 rubbish_;
  std::optional<Seconds> offUntil_;  // nothing while it is on
};

}  // namespace ox::sim
