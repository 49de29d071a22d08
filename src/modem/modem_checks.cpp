// The rules of the modem test's fields.
#include "modem/modem_checks.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "platform/text.h"

namespace ox {
namespace {

constexpr std::size_t kAkzLength = 3;
constexpr std::size_t kDateLength = 6;
constexpr std::size_t kTimeLength = 4;
constexpr std::size_t kMeasuringPointLength = 8;
constexpr std::size_t kParameterLength = 4;
constexpr std::size_t kValueLength = 5;

/// The device keeps measuring-point numbers in 24 bits.
constexpr std::uint32_t kLargestMeasuringPoint = 16777215;
constexpr std::uint32_t kLargestParameter = 999;

constexpr char kBlank = ' ';
constexpr char kMinus = '-';
constexpr std::string_view kQualityFlags = "sf ?T#";
constexpr std::string_view kValueCharacters = "0123456789.#";

constexpr std::string_view kAkzError = "Das Feld AKZ muss drei Ziffern enthalten!";
constexpr std::string_view kDateError = "Das Feld Datum muss sechs Ziffern enthalten!";
constexpr std::string_view kTimeError = "Das Feld Uhrzeit muss vier Ziffern enthalten!";
constexpr std::string_view kMeasuringPointError = "Das Feld MST-Nr. muss acht Ziffern enthalten!";
constexpr std::string_view kMeasuringPointWarning =
    "Warnung: Wertebereichsüberschreitung MST-Nr. (00000000...16777215)!";
constexpr std::string_view kParameterError = "Das Feld Parameter muss vier Ziffern enthalten!";
constexpr std::string_view kParameterWarning =
    "Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!";
constexpr std::string_view kQualityFlagError = "Bewertungszeichen zu lang!";
constexpr std::string_view kQualityFlagWarning =
    "Warnung: Falsches Bewertungszeichen (keines oder s, f, ?, T,# oder leer)!";
constexpr std::string_view kValueError =
    "Das Feld Messwert muss ein Vorzeichen und 4 Ziffern enthalten (. und # sind erlaubt)!";

bool AllDigits(std::string_view text, std::size_t length) {
  return text.size() == length && text.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Of a text of at most eight digits.
std::uint32_t NumericValue(std::string_view digits) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return value;
}

constexpr Finding Warning(std::string_view message, bool takesFocus) {
  return {message, false, takesFocus};
}

/// The focus stays where it is.
std::optional<Finding> CheckDigits(std::string_view text, std::size_t length, std::string_view message) {
  if (AllDigits(text, length)) return std::nullopt;
  return Finding{message, true, false};
}

}  // namespace

std::optional<Finding> CheckOffice(std::string_view akz) {
  return CheckDigits(akz, kAkzLength, kAkzError);
}

std::optional<Finding> CheckDate(std::string_view date) {
  return CheckDigits(date, kDateLength, kDateError);
}

std::optional<Finding> CheckTime(std::string_view time) {
  return CheckDigits(time, kTimeLength, kTimeError);
}

std::optional<Finding> CheckMeasuringPoint(std::string_view number) {
  if (!AllDigits(number, kMeasuringPointLength)) return Finding{kMeasuringPointError};
  if (NumericValue(number) > kLargestMeasuringPoint) return Warning(kMeasuringPointWarning, true);
  return std::nullopt;
}

std::optional<Finding> CheckParameter(std::string_view number) {
  if (!AllDigits(number, kParameterLength)) return Finding{kParameterError};
  if (NumericValue(number) > kLargestParameter) return Warning(kParameterWarning, false);
  return std::nullopt;
}

std::optional<Finding> CheckQualityFlag(std::string_view flag) {
  if (ToBytes(flag).size() > 1) return Finding{kQualityFlagError};
  // Compared as text, not as bytes: a character that has no byte would become "?", which is a valid flag.
  if (kQualityFlags.find(flag) == std::string_view::npos) return Warning(kQualityFlagWarning, false);
  return std::nullopt;
}

std::optional<Finding> CheckValue(std::string_view value) {
  const bool valid =
      value.size() == kValueLength && value.find_first_not_of(kValueCharacters, 1) == std::string_view::npos;
  if (!valid) return Finding{kValueError};
  return std::nullopt;
}

std::string NormalisedQualityFlag(std::string_view flag) {
  return flag.empty() ? std::string(1, kBlank) : std::string(flag);
}

std::string NormalisedValue(std::string_view value) {
  std::string normalised(value);
  if (!value.starts_with(kBlank) && !value.starts_with(kMinus)) normalised.insert(0, 1, kBlank);
  if (normalised.back() == kBlank) normalised.pop_back();
  return normalised;
}

}  // namespace ox
