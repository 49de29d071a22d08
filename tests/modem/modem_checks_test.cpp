// Every rule of the modem test's fields, and the records that come of them.
#include "modem/modem_checks.h"

#include <gtest/gtest.h>

#include "modem/modem_requests.h"

namespace ox {
namespace {

/// What became of a check: "" for nothing, else "error " or "warning ", with "focus ", and the message.
std::string Told(const std::optional<Finding>& finding) {
  if (!finding) return "";
  return std::string(finding->stops ? "error " : "warning ") + (finding->takesFocus ? "focus " : "") +
         std::string(finding->message);
}

constexpr const char* kAkz = "error Das Feld AKZ muss drei Ziffern enthalten!";
constexpr const char* kDate = "error Das Feld Datum muss sechs Ziffern enthalten!";
constexpr const char* kTime = "error Das Feld Uhrzeit muss vier Ziffern enthalten!";
constexpr const char* kPoint = "error focus Das Feld MST-Nr. muss acht Ziffern enthalten!";
constexpr const char* kPointRange =
    "warning focus Warnung: Wertebereichsüberschreitung MST-Nr. (00000000...16777215)!";
constexpr const char* kParameter = "error focus Das Feld Parameter muss vier Ziffern enthalten!";
constexpr const char* kParameterRange =
    "warning Warnung: Wertebereichsüberschreitung Parameter (0000...0999)!";
constexpr const char* kFlagLength = "error focus Bewertungszeichen zu lang!";
constexpr const char* kFlag =
    "warning Warnung: Falsches Bewertungszeichen (keines oder s, f, ?, T,# oder leer)!";
constexpr const char* kValue =
    "error focus Das Feld Messwert muss ein Vorzeichen und 4 Ziffern enthalten (. und # sind erlaubt)!";

struct Case {
  const char* text;
  const char* told;
};

TEST(ModemChecks, DateRequestTellsItsFirstError) {
  EXPECT_EQ(Told(CheckDateRequest("123", "161106", "1430")), "");
  EXPECT_EQ(Told(CheckDateRequest("12", "16110", "143")), kAkz);
  for (const char* akz : {"", "1234", "12a", "1 2", "äöü"}) {
    EXPECT_EQ(Told(CheckDateRequest(akz, "161106", "1430")), kAkz) << akz;
  }
  EXPECT_EQ(Told(CheckDateRequest("123", "16.1.6", "14:30")), kDate);
  EXPECT_EQ(Told(CheckDateRequest("123", "161106", "14:30")), kTime);
}

TEST(ModemChecks, MeasuringPointAndParameter) {
  const Case points[] = {{"00000000", ""},          {"16777215", ""},     {"16777216", kPointRange},
                         {"99999999", kPointRange}, {"1677721", kPoint},  {"123456789", kPoint},
                         {"1234567x", kPoint},      {"-1234567", kPoint}, {"", kPoint}};
  for (const Case& c : points) EXPECT_EQ(Told(CheckMeasuringPoint(c.text)), c.told) << c.text;
  const Case parameters[] = {
      {"0000", ""},        {"0999", ""},          {"1000", kParameterRange}, {"9999", kParameterRange},
      {"999", kParameter}, {"00999", kParameter}, {"0 99", kParameter}};
  for (const Case& c : parameters) EXPECT_EQ(Told(CheckParameter(c.text)), c.told) << c.text;
}

TEST(ModemChecks, QualityFlagIsOneKnownCharacter) {
  const Case flags[] = {
      {"", ""},     {"s", ""},     {"f", ""},           {" ", ""},           {"?", ""},
      {"T", ""},    {"#", ""},     {"S", kFlag},        {"F", kFlag},        {"t", kFlag},
      {"ä", kFlag}, {"日", kFlag}, {"ss", kFlagLength}, {"sf", kFlagLength}, {"  ", kFlagLength}};
  for (const Case& c : flags) EXPECT_EQ(Told(CheckQualityFlag(c.text)), c.told) << c.text;
  EXPECT_EQ(NormalisedQualityFlag(""), " ");
  EXPECT_EQ(NormalisedQualityFlag("s"), "s");
}

TEST(ModemChecks, ValueGetsItsSignBeforeItIsChecked) {
  struct ValueCase {
    const char* typed;
    const char* normalised;
    const char* told;
  };
  const ValueCase cases[] = {
      {"0123", " 0123", ""},     {"-12.3", "-12.3", ""},      {" 12.3", " 12.3", ""},
      {"12.3 ", " 12.3", ""},    {" 12.3 ", " 12.3", ""},     {"####", " ####", ""},
      {"....", " ....", ""},     {"+0123", " +0123", kValue}, {" 12.3  ", " 12.3 ", kValue},
      {"-123 ", "-123", kValue}, {"12,3", " 12,3", kValue},   {"-12-3", "-12-3", kValue},
      {"", "", kValue},          {" ", "", kValue},           {"  ", " ", kValue},
      {"123ä", " 123ä", kValue}, {"12345", " 12345", kValue}};
  for (const ValueCase& c : cases) {
    EXPECT_EQ(NormalisedValue(c.typed), c.normalised) << c.typed;
    EXPECT_EQ(Told(CheckValue(NormalisedValue(c.typed))), c.told) << c.typed;
  }
}

TEST(ModemRequests, StandToTheCharacter) {
  EXPECT_EQ(BuildDateRequest("123", "161106", "1430"), "*123 161106 1430\r");
  EXPECT_EQ(BuildValueRequest("12345678", "0012", "s", " 12.3"), "#12345678: 0012 s  12.3 \r");
}

}  // namespace
}  // namespace ox
