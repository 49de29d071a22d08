// Numbers taken out of the texts that people read.
#include "power/power_csv.h"

#include <string_view>

#include "platform/line_ends.h"
#include "platform/time_text.h"

namespace ox {
namespace {

constexpr std::string_view kHeading =
    "Zeit;Akkuladung %;Akkuspannung V;Netzteilspannung V;Akkukapazität %;Temperatur °C;Ladebetrieb";

/// The number in front of the unit.
std::string Number(std::string_view text) {
  text.remove_prefix(text.starts_with(' ') ? 1 : 0);
  std::string number(text.substr(0, text.find_first_not_of("-0123456789.")));
  const std::size_t point = number.find('.');
  if (point != std::string::npos) number[point] = ',';
  return number;
}

}  // namespace

std::string PowerCsvHeading() {
  return std::string(kHeading).append(kCrLf);
}

std::string PowerCsvLine(const CivilTime& time, const PowerStatusTexts& texts) {
  std::string line = IsoTime(time);
  for (const std::string* text :
       {&texts.charge, &texts.batteryVoltage, &texts.mainsVoltage, &texts.capacity, &texts.temperature}) {
    line += ";" + Number(*text);
  }
  return line + ";" + texts.state + std::string(kCrLf);
}

}  // namespace ox
