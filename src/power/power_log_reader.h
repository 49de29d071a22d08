// The log of the power monitor read back, line by line.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/bytes.h"
#include "platform/clock.h"

namespace ox {

/// The numbers of a line, in their order.
enum class LogValue : std::uint8_t { kCharge, kBatteryVoltage, kMainsVoltage, kCapacity, kTemperature };
constexpr std::size_t kLogValues = 5;

struct PowerLogEntry {
  CivilTime time;
  std::array<std::string, kLogValues> values;  ///< as the log has them, without unit: "79.1"
  std::string state;                           ///< letters, blanks and "?", UTF-8

  float Number(LogValue value) const;
};

enum class LogLineKind : std::uint8_t {
  kEntry,
  kRuler,  ///< a run of the monitor begins
  kEmpty,
  kUnknown,  ///< anything else
};

/// Takes a log apart; it may be of any content. Lines end with CR LF or LF; UTF-8, with or without
/// a byte order mark, or Windows-1252.
class PowerLogReader {
 public:
  /// The text outlives the reader.
  explicit PowerLogReader(BytesView text);

  bool AtEnd() const { return rest_.empty(); }

  /// The next line's kind; its entry is there until the next call.
  LogLineKind Next();

  int Line() const { return line_; }
  const PowerLogEntry& Entry() const { return entry_; }

 private:
  BytesView rest_;
  int line_ = 0;
  PowerLogEntry entry_;
};

}  // namespace ox
