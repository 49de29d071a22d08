// What the modem test asks of its fields before it sends them. All texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ox {

/// What the user is told about a field.
struct Finding {
  std::string_view message;
  bool stops = true;       // an error: nothing is sent; otherwise a warning
  bool takesFocus = true;  // the focus goes into the field
};

std::optional<Finding> CheckOffice(std::string_view akz);
std::optional<Finding> CheckDate(std::string_view date);
std::optional<Finding> CheckTime(std::string_view time);
std::optional<Finding> CheckMeasuringPoint(std::string_view number);
std::optional<Finding> CheckParameter(std::string_view number);
/// An empty flag is right.
std::optional<Finding> CheckQualityFlag(std::string_view flag);
/// Of a value as NormalisedValue leaves it.
std::optional<Finding> CheckValue(std::string_view value);

/// The flag that is sent: a blank for an empty one.
std::string NormalisedQualityFlag(std::string_view flag);

/// The value with a sign (a blank for a positive one); of blanks at its end one is taken away.
std::string NormalisedValue(std::string_view value);

}  // namespace ox
