// One line of the service program's support log; docs/device-formats.md has the layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/bytes.h"
#include "simulator/line/line_settings.h"

namespace ox::sim {

/// Of what happens in a log only the port's part.
struct LogEvent {
  enum class Kind {
    kOpening,   ///< the port was opened, with `settings`
    kSent,      ///< the PC sent `bytes`
    kReceived,  ///< the PC received `bytes`, the last of them `lasted` after the first
    kBroken,    ///< the line broke; the port is closed
    kClosed,    ///< the PC closed the port
    kOther,     ///< anything else
    kEnd,       ///< behind the last line
  };

  Kind kind = Kind::kEnd;
  std::int64_t time = 0;    ///< milliseconds since the log's beginning
  std::int64_t lasted = 0;  ///< milliseconds
  int opening = 0;          ///< number of the opening
  LineSettings settings;
  Bytes bytes;
  std::size_t line = 0;  ///< number of the line in the file, from 1 on
};

/// What a log's first line tells.
struct LogHeader {
  int format = 0;       ///< of the lines
  Bytes build;          ///< the program and its build; "." for what is no printable ASCII
  Bytes begun;          ///< "2026-11-23 11:45:02"
  int secondOfDay = 0;  ///< the same as a time of day
};

/// The number of the format that these routines read.
constexpr int kLogFormat = 1;

/// Reads a first line, without its line end; nothing when it begins no log.
std::optional<LogHeader> ReadLogHeader(BytesView line);

/// Reads any other line, without its line end; `line` of the event is left 0. Nothing when it cannot be
/// understood.
std::optional<LogEvent> ReadLogLine(BytesView line);

}  // namespace ox::sim
