// Digits of dates and times.
#include "platform/time_text.h"

#include <array>
#include <cstdio>

namespace ox {
namespace {

/// `format` takes the six numbers in the order in which they are given.
std::string Format(const char* format, int a, int b, int c, const CivilTime& time) {
  std::array<char, 80> text{};  // six numbers of any size
  std::snprintf(text.data(), text.size(), format, a, b, c, time.hour, time.minute, time.second);
  return text.data();
}

}  // namespace

std::string IsoTime(const CivilTime& time) {
  return Format("%04d-%02d-%02dT%02d:%02d:%02d", time.year, time.month, time.day, time);
}

std::string GermanTime(const CivilTime& time) {
  return Format("%02d.%02d.%04d %02d:%02d:%02d", time.day, time.month, time.year, time);
}

}  // namespace ox
