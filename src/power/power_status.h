// The device's power status: from its line to six figures, and from these to what people read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "platform/bytes.h"

namespace ox {

/// The six figures in the order and the units of the line: -32768 to 32767 each.
struct PowerStatus {
  int charge = 0;          // tenths of a percent
  int capacity = 0;        // tenths of a percent
  int mainsVoltage = 0;    // millivolts
  int batteryVoltage = 0;  // millivolts
  int temperature = 0;     // degrees Celsius plus 100
  int state = 0;           // code of the charger's state, 1 to 10 with a sound device
};

/// The line carries temperatures with this on top, so that frost is a positive number.
constexpr int kTemperatureOffset = 100;

/// The same as it is shown, UTF-8.
struct PowerStatusTexts {
  std::string charge;          // "79.1%"
  std::string capacity;        // "95.0%"
  std::string mainsVoltage;    // "12.345V"
  std::string batteryVoltage;  // "0.850V"
  std::string temperature;     // " 23°C"
  std::string state;           // "Schnellladung"
};

/// Fields of four hexadecimal digits, back to back; what follows the last is ignored.
constexpr std::size_t kPowerFieldLength = 4;
constexpr std::size_t kPowerStatusLength = 6 * kPowerFieldLength;

/// Reads the line behind its framing character; nothing when it is too short. A field counts up to its first
/// character that is no hexadecimal digit.
std::optional<PowerStatus> ReadPowerStatus(BytesView data);

/// Charge, capacity and voltages lose their minus sign; an unknown state is "???".
PowerStatusTexts FormatPowerStatus(const PowerStatus& status);

}  // namespace ox
