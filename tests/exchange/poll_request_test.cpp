// Which fields are refused, in which order, and what the others become on the line.
#include "exchange/poll_request.h"

#include <gtest/gtest.h>

#include <string>

namespace ox::test {
namespace {

constexpr std::string_view kNoField =
    "Mindestens eines der drei Felder - Amtskennzeichen, Parameter oder Messstellennummer - muss einen "
    "Eintrag enthalten!";
constexpr std::string_view kNoValue = "Parameter und Messstellennummer müssen einen eingegeben sein!";
constexpr std::string_view kOffice =
    "Das Feld  > Amtskennzeichen <  muss leer sein oder drei Ziffern enthalten!";
constexpr std::string_view kParameter =
    "Das Feld  > Parameter <  muss leer sein oder vier Ziffern enthalten!";
constexpr std::string_view kPoint =
    "Das Feld  > Messstellennummer <  muss leer sein oder acht Ziffern enthalten!";
constexpr std::string_view kFine;

TEST(PollRequest, TheFirstFailingCheckRefuses) {
  struct Row {
    PollFields fields;
    std::string_view single;
    std::string_view z;
  };
  const Row rows[] = {
      {{"", "", ""}, kNoField, kNoValue},           {{"12", "1234567", ""}, kOffice, kNoValue},
      {{"12", "", "1"}, kOffice, kNoValue},         {{"12", "1", "1"}, kOffice, kOffice},
      {{"12a", "1", "1"}, kOffice, kOffice},        {{" 123", "1", "1"}, kOffice, kOffice},
      {{"1234", "1", "1"}, kOffice, kOffice},       {{"123", "1", "+012"}, kParameter, kParameter},
      {{"", "1", "00012"}, kParameter, kParameter}, {{"", "1234567", "0012"}, kPoint, kPoint},
      {{"", "1234567:", "0012"}, kPoint, kPoint},   {{"", "1234567/", "0012"}, kPoint, kPoint},
      {{"", "12345678", "0012"}, kFine, kFine},     {{"123", "12345678", "0012"}, kFine, kFine},
      {{"123", "", ""}, kFine, kNoValue},
  };
  for (const Row& row : rows) {
    const std::string fields = row.fields.AKZ + "," + row.fields.MST + "," + row.fields.Par;
    EXPECT_EQ(RefusalOfSingleRequest(row.fields).value_or(kFine), row.single) << fields;
    EXPECT_EQ(RefusalOfZRequest(row.fields).value_or(kFine), row.z) << fields;
  }
}

TEST(PollRequest, RequestsHaveTheirColumns) {
  EXPECT_EQ(SingleRequest({"123", "12345678", "0012"}), "J123 12345678: 0012\r");
  EXPECT_EQ(SingleRequest({"", "", "0012"}), "J              0012\r");
  EXPECT_EQ(SingleRequest({"123", "", ""}), "J123               \r");
  EXPECT_EQ(SingleRequest({"", "12345678", ""}), "J    12345678:     \r");
  EXPECT_EQ(ZRequest({"", "12345678", "0012"}), "Z    12345678: 0012\r");
  EXPECT_EQ(ZRequest({"123", "12345678", "0012"}), "Z123 12345678: 0012\r");
}

}  // namespace
}  // namespace ox::test
