// Any bytes as a status line: decoded, shown and laid out for the log.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "power/power_log.h"
#include "power/power_status.h"

namespace {

/// The number that a text with a decimal point stands for, in units of its last digit.
int UnitsOf(std::string text) {
  text.erase(text.find('.'), 1);
  return std::stoi(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ox::BytesView line(reinterpret_cast<const char*>(data), size);
  const std::optional<ox::PowerStatus> status = ox::ReadPowerStatus(line);
  if (status.has_value() != (size >= ox::kPowerStatusLength)) __builtin_trap();
  if (!status) return 0;
  const ox::PowerStatusTexts texts = ox::FormatPowerStatus(*status);
  if (UnitsOf(texts.charge) != std::abs(status->charge)) __builtin_trap();
  if (UnitsOf(texts.mainsVoltage) != std::abs(status->mainsVoltage)) __builtin_trap();
  // Every column but the last has its width, so a line is never shorter than an empty one.
  const std::size_t columns = ox::LogLine({}, {}).size();
  if (ox::LogLine({}, texts).size() < columns + texts.state.size()) __builtin_trap();
  return 0;
}
