// The log of the power monitor: when a line is due, what it says, and its file.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/files.h"
#include "power/power_status.h"

namespace ox {

/// A line is due with every change of the charger's state, otherwise about once a minute.
class LogRule {
 public:
  /// Makes the next sample due whatever its state. `now` in seconds since midnight.
  void Restart(float now);

  /// Whether a sample of this state is to be logged. If so, it counts as the last one logged.
  bool TakeIfDue(int state, float now);

 private:
  float LastLogTime_ = 0;
  int LastState_ = 0;
};

/// One line of the log, UTF-8, without its line end.
std::string LogLine(const CivilTime& time, const PowerStatusTexts& texts);

/// The log file in the working folder, UTF-8, lines ended by CR LF. Each line is on the disk when it is
/// written. Nobody is told of a failure here.
class PowerLog {
 public:
  explicit PowerLog(Files& files) : files_(files) {}

  /// Opens the file at its end, made when missing; false, with the log closed, when that failed.
  bool Open();

  /// Writes what sets one run off from the next; false when the disk did not take it. Not on a closed log.
  bool WriteHeader();

  /// False when the disk did not take the line; not on a closed log.
  bool Write(std::string_view line);

  void Close() { file_.reset(); }

 private:
  Files& files_;
  std::unique_ptr<AppendFile> file_;
};

}  // namespace ox
