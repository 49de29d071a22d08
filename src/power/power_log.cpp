// Log lines to the character, and the file that they go to.
#include "power/power_log.h"

#include <cmath>
#include <cstddef>

#include "platform/line_ends.h"
#include "platform/text.h"
#include "power/decimal_text.h"

namespace ox {
namespace {

constexpr std::string_view kLogFile = "PowerManagementLog.txt";
constexpr std::size_t kRulerLength = 140;

/// Half a second less than a minute, so that a tick that comes early does not put the line off by one more.
constexpr float kLogSeconds = 59.5F;
/// Longer ago than the rule asks for.
constexpr float kLongAgoSeconds = 60.0F;

constexpr std::size_t kPercentWidth = 6;
constexpr std::size_t kVoltWidth = 7;
constexpr std::size_t kTemperatureWidth = 5;

/// In characters; a longer text keeps its end.
std::string RightAligned(std::string_view text, std::size_t width) {
  Bytes characters = ToBytes(text);
  if (characters.size() > width) characters.erase(0, characters.size() - width);
  return std::string(width - characters.size(), ' ') + ToText(characters);
}

std::string TimeStamp(const CivilTime& time) {
  return DecimalText(time.month, 2) + "-" + DecimalText(time.day, 2) + "-" + DecimalText(time.year, 4) + " " +
         DecimalText(time.hour, 2) + ":" + DecimalText(time.minute, 2) + ":" + DecimalText(time.second, 2);
}

}  // namespace

void LogRule::Restart(float now) {
  LastLogTime_ = now - kLongAgoSeconds;
}

bool LogRule::TakeIfDue(int state, float now) {
  // The difference counts without its sign: when the clock falls back at midnight, a line is due.
  if (state == LastState_ && std::abs(LastLogTime_ - now) < kLogSeconds) return false;
  LastState_ = state;
  LastLogTime_ = now;
  return true;
}

std::string LogLine(const CivilTime& time, const PowerStatusTexts& texts) {
  return TimeStamp(time) + "  Akkuldg: " + RightAligned(texts.charge, kPercentWidth) +
         "  Akkuspg:" + RightAligned(texts.batteryVoltage, kVoltWidth) +
         "  Netzteilspg: " + RightAligned(texts.mainsVoltage, kVoltWidth) +
         "  Kapazität: " + RightAligned(texts.capacity, kPercentWidth) +
         "  Temp.:" + RightAligned(texts.temperature, kTemperatureWidth) + "  Ladebetrieb: " + texts.state;
}

bool PowerLog::Open() {
  file_ = files_.OpenForAppending(std::string(kLogFile));
  return file_ != nullptr;
}

bool PowerLog::WriteHeader() {
  return Write("") && Write("") && Write(std::string(kRulerLength, '-'));
}

bool PowerLog::Write(std::string_view line) {
  return file_->Append(std::string(line).append(kCrLf));
}

}  // namespace ox
