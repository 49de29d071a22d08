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
  /// What lets its program be written.
  enum class ProgramKey {
    kNone,         ///< nothing does; nor can its tables be written: the loader only verifies and restarts
    kPreparation,  ///< "0" and "1"
    kKind          ///< an accepted "c"
  };

  Bytes kinds;  ///< the kind queries it accepts, out of "abc"; none for software before 3.0
  ProgramKey programKey;
};

inline const LoaderModel kLoaderBefore30{"", LoaderModel::ProgramKey::kNone};
inline const LoaderModel kLoaderGeneration2{"a", LoaderModel::ProgramKey::kPreparation};
inline const LoaderModel kLoaderGeneration3{"bc", LoaderModel::ProgramKey::kKind};

/// Bytes at 19200,n,8,1 in, replies out; the time is given from outside. The loader keeps its state however
/// often the other end closes its port, until the device restarts.
///
/// A request is "S", answered "A", then a block frame, answered "A" or "N". Only "P" has data, a whole block
/// for a whole block's address; every other request goes to address 0.
///
/// Which area "P" writes: the tables after "2", the program after "0" and "1" or after "c". It stays open,
/// however long nothing comes, until "V", another of these or an accepted kind query; with no area open "P"
/// is refused.
///
/// "V" ends an attempt. Behind the program's last block it verifies the program; else it says no more than
/// that the loader runs, so that a new attempt can begin at once, however the last one ended.
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

 private:
  enum class State { kIdle, kAwake, kFrame, kSkipping };
  enum class Area { kNone, kTables, kProgram };

  void Take(BytesView piece, Seconds now, std::vector<TimedReply>& replies);
  void TakeOutsideFrame(char byte, Seconds now, std::vector<TimedReply>& replies);
  void WakeUp(Seconds now, std::vector<TimedReply>& replies);
  void LookAtFrame(Seconds now, std::vector<TimedReply>& replies);
  void Answer(bool headerSound, Seconds now, std::vector<TimedReply>& replies);
  void Open(Area area);
  bool CarryOut();
  bool VerifyProgram();
  bool ConfirmKind(char letter);
  bool PrepareProgram(char letter);
  bool PrepareTables();
  bool WriteBlock();

  LoaderModel model_;
  DeviceMemory& memory_;
  ReplyFaults& faults_;
  bool running_ = false;
  State state_ = State::kIdle;
  Area area_ = Area::kNone;
  bool programUnlocked_ = false;   // "0" was accepted, so "1" may erase
  bool lastBlockWritten_ = false;  // of the program, since its area was opened
  Bytes frame_;                    // header and data so far
  std::size_t toSkip_ = 0;         // data bytes of a refused frame that are still to come
  Seconds lastByte_ = 0;
};

}  // namespace ox::sim
