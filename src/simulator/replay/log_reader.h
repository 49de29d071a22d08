// A support log, event by event.
#pragma once

#include <array>
#include <cstddef>
#include <istream>
#include <optional>

#include "simulator/replay/log_line.h"

namespace ox::sim {

/// Holds one line at a time, so that a log may be as long as it likes. Where its last line was cut off, as a
/// program that was killed or a full disk leaves it, the log ends before that line.
class LogReader {
 public:
  /// Reads the first line; throws std::runtime_error, in German, when it begins no log or one of another
  /// format. The text outlives the reader.
  explicit LogReader(std::istream& text);

  const LogHeader& Header() const { return header_; }

  /// The next event of the port; kEnd behind the last. Throws std::runtime_error, in German, at a line that
  /// cannot be understood.
  LogEvent Next();

 private:
  /// The next whole line; nothing at the end.
  std::optional<BytesView> NextLine();

  /// The longest line that the program writes is some 8000 bytes long.
  static constexpr std::size_t kLongestLine = 16384;

  std::istream& text_;
  std::array<char, kLongestLine> line_{};
  std::size_t number_ = 0;  // of the line
  LogHeader header_;
  LogEvent end_;  // with line and time of the last one before
};

/// What a whole log holds.
struct LogContents {
  LogHeader header;
  int openings = 0;
};

/// Reads a log from its beginning to its end; throws as the reader does.
LogContents LookThrough(std::istream& text);

}  // namespace ox::sim
