// The loader of a simulated device: takes block frames and writes them into the device's memory.
#pragma once

#include <cstddef>
#include <vector>

#include "platform/bytes.h"
#include "simulator/device/device_memory.h"
#include "simulator/device/reply_faults.h"

namespace ox::sim {

/// What the loader of a device can do.
struct LoaderModel {
  Bytes kinds;  ///< the kind queries it accepts, out of "abc"; none for software before 3.0
  /// True: it writes its program after "0" and "1". False: after a kind query, without preparation.
  bool preparesProgram;
};

inline const LoaderModel kLoaderBefore30{"", true};
inline const LoaderModel kLoaderGeneration2{"a", true};
inline const LoaderModel kLoaderGeneration3{"bc", false};

/// Bytes at 19200,n,8,1 in, replies out; the time is given from outside. The loader keeps its state however
/// often the other end closes its port, until the device restarts.
///
/// A request is "S", answered "A", then a block frame, answered "A" or "N". Which area "P" writes: the tables
/// after "2", the program after "0" and "1". An accepted kind query forgets a preparation; on a device that
/// wants none for its program it opens the program area. With no area open "P" is refused.
///
/// "V" verifies the program while its area is open; else it says no more than that the loader runs. A pause
/// of kAttemptSilence ends an attempt and closes its area, so a new attempt is always welcome.
class Loader {
 public:
  /// Memory and faults belong to the device and must outlive the loader.
  Loader(LoaderModel model, DeviceMemory& memory, ReplyFaults& faults);

  /// Starts the loader afresh: nothing prepared, waiting for "S".
  void Start();

  /// True from Start until an "X" that the device could follow by restarting with a sound program.
  bool Running() const { return running_; }

  /// Takes bytes that arrive now; they may come in any pieces. Returns the replies, in order of their
  /// requests. Bytes after the restart are left alone. A frame in which nothing arrives for kFrameSilence is
  /// forgotten.
  std::vector<TimedReply> Receive(BytesView bytes, Seconds now);

  /// Bytes that are still to come before the loader says anything, at least 1: the rest of a frame's header
  /// or of its data. They may be handed over together.
  std::size_t Missing() const;

  /// Pause within a frame after which the loader waits for "S" again.
  static constexpr Seconds kFrameSilence = 0.5;

  /// Pause after which nothing counts as prepared any more, from the last byte or the reply to it.
  static constexpr Seconds kAttemptSilence = 2.0;

 private:
  enum class State { Idle, Awake, Frame, Skipping };
  enum class Area { None, Tables, Program };

  void Take(BytesView piece, Seconds now, std::vector<TimedReply>& replies);
  void TakeOutsideFrame(char byte, Seconds now, std::vector<TimedReply>& replies);
  void WakeUp(Seconds now, std::vector<TimedReply>& replies);
  void LookAtFrame(Seconds now, std::vector<TimedReply>& replies);
  void Answer(bool headerSound, Seconds now, std::vector<TimedReply>& replies);
  void EndAttempt();
  bool CarryOut();
  bool ConfirmKind(char letter);
  bool PrepareProgram(char letter);
  bool WriteBlock();

  LoaderModel model_;
  DeviceMemory& memory_;
  ReplyFaults& faults_;
  bool running_ = false;
  State state_ = State::Idle;
  Area area_ = Area::None;
  bool programUnlocked_ = false;  // "0" was accepted, so "1" may erase
  Bytes frame_;                   // header and data so far
  std::size_t toSkip_ = 0;        // data bytes of a refused frame that are still to come
  Seconds lastByte_ = 0;
  Seconds lastReply_ = 0;  // when it left the device
};

}  // namespace ox::sim
