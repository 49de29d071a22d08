// The status line's fields and their six texts.
#include "power/power_status.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <string_view>

#include "power/decimal_text.h"

namespace ox {
namespace {

constexpr int kHexadecimal = 16;
constexpr std::size_t kPercentDecimals = 1;
constexpr std::size_t kVoltDecimals = 3;

/// By code, from 1 on.
constexpr std::array<std::string_view, 10> kStates{
    "Entladung",         "Ladung blockiert", "Warten auf Temperatur",
    "Initialladung",     "Schnellladung",    "Zeitgesteuerte Ladung",
    "Überladung",        "Ladung beendet",   "Akkukontrolle",
    "Ladung verhindert",
};
constexpr std::string_view kUnknownState = "???";

int ReadField(BytesView data, std::size_t index) {
  const BytesView field = data.substr(index * kPowerFieldLength, kPowerFieldLength);
  std::uint16_t value = 0;
  // No digit at all leaves the 0; four digits cannot overflow.
  std::from_chars(field.data(), field.data() + field.size(), value, kHexadecimal);
  return static_cast<std::int16_t>(value);
}

/// At least one digit stands before the point.
std::string WithDecimals(int value, std::size_t decimals) {
  std::string text = DecimalText(value, decimals + 1);
  return text.insert(text.size() - decimals, ".");
}

std::string TemperatureText(int temperature) {
  const int degrees = temperature - kTemperatureOffset;
  return (degrees < 0 ? "-" : " ") + DecimalText(degrees, 1) + "°C";
}

std::string_view StateText(int code) {
  const bool known = code >= 1 && code <= static_cast<int>(kStates.size());
  return known ? kStates[static_cast<std::size_t>(code - 1)] : kUnknownState;
}

}  // namespace

std::optional<PowerStatus> ReadPowerStatus(BytesView data) {
  if (data.size() < kPowerStatusLength) return std::nullopt;
  return PowerStatus{ReadField(data, 0), ReadField(data, 1), ReadField(data, 2),
                     ReadField(data, 3), ReadField(data, 4), ReadField(data, 5)};
}

PowerStatusTexts FormatPowerStatus(const PowerStatus& status) {
  return {WithDecimals(status.charge, kPercentDecimals) + "%",
          WithDecimals(status.capacity, kPercentDecimals) + "%",
          WithDecimals(status.mainsVoltage, kVoltDecimals) + "V",
          WithDecimals(status.batteryVoltage, kVoltDecimals) + "V",
          TemperatureText(status.temperature),
          std::string(StateText(status.state))};
}

}  // namespace ox
