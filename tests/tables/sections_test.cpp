// Encodings and the four sections of generation III, against bytes worked out by hand.
#include <gtest/gtest.h>

#include "tables/encodings.h"
#include "tables/image_sections.h"
#include "tables/packed_samples.h"
#include "tables/point_section.h"

namespace ox {
namespace {

TEST(Encodings, FollowTheDevice) {
  EXPECT_EQ(PackWord(300), Packed("\x2C\x01"));
  EXPECT_EQ(PackWord(0x12345), Packed("\x45\x23"));
  EXPECT_EQ(PackBcd("1023"), Packed("\x23\x10"));
  EXPECT_EQ(PackBcd("123"), Packed("\x23\x01"));
  EXPECT_EQ(PackBcd("0000"), Packed("\0\0"));
  EXPECT_EQ(PackBcd("12345678"), Packed("\x78\x56\x34\x12"));
  for (const char* bad : {"", "1x", "-123", " 1"}) EXPECT_EQ(PackBcd(bad), "") << bad;
  EXPECT_EQ(PackSignedDifference("-0012"), Packed("\xF4\xFF"));
  EXPECT_EQ(PackSignedDifference(" 0012"), Packed("\x0C\0"));
  EXPECT_EQ(PackSignedDifference("-9999"), Packed("\xF1\xD8"));
  EXPECT_EQ(PackSignedDifference(" 9999"), Packed("\x0F\x27"));
  EXPECT_EQ(PackSignedDifference("-0000"), Packed("\0\0"));
  for (const char* bad : {"", "-001", "-00120", "-0x12", "+0012", "00012"})
    EXPECT_EQ(PackSignedDifference(bad), "");
}

TEST(Sections, VersionIsCutToTwelveCharacters) {
  EXPECT_EQ(BuildVersionField(OfficeTable("")), Packed("Stand\0"));
  EXPECT_EQ(BuildVersionField(Packed("1234567890123456\0\0\0")), Packed("123456789012\0"));
  EXPECT_EQ(BuildVersionField(Packed("\0\0\0")), "");
  EXPECT_EQ(BuildVersionField("Stand"), "");
}

TEST(Sections, Parameters) {
  EXPECT_EQ(BuildParameterImage(Packed("0012 Temp.Luft \x1F"
                                       "C \0"
                                       "1023 Abfluss   m3s\0\0\0")),
            Packed("\2\0\0\0\x12\0Temp.Luft\x1F"
                   "C \x23\x10"
                   "Abfluss  m3s\xFF\xFF"));
  EXPECT_EQ(BuildParameterImage(Packed("\0\0")), Packed("\0\0\0\0\xFF\xFF"));
  for (const Bytes& bad : {Packed("0012 Temp.Luft C \0\0\0"), Packed("0012-Temp.Luft CCC\0\0\0"),
                           Packed("0012 Temp.Luft-CCC\0\0\0"), Packed("00x2 Temp.Luft CCC\0\0\0"),
                           Packed("0012 Temp.Luft CCC\0"), Packed("")}) {
    EXPECT_EQ(BuildParameterImage(bad), "");
  }
}

TEST(Sections, Offices) {
  const Bytes entry = PointEntry("12345678", "0001");
  EXPECT_EQ(BuildOfficeImage(Packed("V\0\0Leer\0"
                                    "045\0\0\0"
                                    "14 Zeichen ja!\0"
                                    "123\0") +
                             entry + entry + Packed("\0\0\0")),
            Packed("\2\0\0\0\x45\0Leer          \x23\x01"
                   "14 Zeichen ja!\xFF\xFF"));
  EXPECT_EQ(BuildOfficeImage(Packed("V\0\0\0")), Packed("\0\0\0\0\xFF\xFF"));
  for (const Bytes& bad : {Packed("V\0\0Amt\0A1B\0\0\0\0"),
                           Packed("V\0\0Amt\0"
                                  "12\0\0\0\0"),
                           Packed("V\0\0Fuenfzehn lang!\0"
                                  "123\0\0\0\0"),
                           Packed("V\0\0Amt\0"
                                  "123"),
                           Packed("V\0\0Amt"),
                           Packed("V\0\0Amt\0"
                                  "123\0"),
                           Packed("V")}) {
    EXPECT_EQ(BuildOfficeImage(bad), "");
  }
}

TEST(Sections, MeasuringPoints) {
  const PointSection section = BuildMeasuringPointImage(
      OfficeTable(PointEntry("12345678", "00121023") + PointEntry("00000001", "0001")));
  EXPECT_EQ(section.status, PointSectionStatus::kBuilt);
  EXPECT_EQ(section.bytes, Packed("\2\0\0\0"
                                  "\x78\x56\x34\x12\x23\x01\x0C\0\xF4\xFFPegel\xFF\x18\0"
                                  "\x01\0\0\0\x23\x01\x0C\0\xF4\xFFPegel\xFF\x0C\0"
                                  "\xFF\xFF\xFF\xFF"
                                  "\x12\0\x23\x10\xFF\xFF"
                                  "\x01\0\xFF\xFF"
                                  "\xFF\xFF\xFF\xFF"));
}

TEST(Sections, MeasuringPointsThatCannotBeWrittenLeaveNone) {
  const Bytes good = PointEntry("12345678", "0001");
  for (const Bytes& bad :
       {PointEntry("12345678"), PointEntry("12345678", "00010"), PointEntry("12345678", "000x"),
        PointEntry("1234567", "0001"), PointEntry("1234567x", "0001")}) {
    const PointSection section = BuildMeasuringPointImage(OfficeTable(good + bad + good));
    EXPECT_EQ(section.status, PointSectionStatus::kWithoutEntries);
    EXPECT_EQ(section.bytes, Packed("\3\0\0\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"));
  }
  for (const Bytes& table : {OfficeTable(""), Packed("V\0\0Amt\0A1B\0") + good + Packed("\0\0\0"),
                             Packed("V\0\0Amt\0"
                                    "123\0") +
                                 good,
                             Packed("V\0\0\0"), Bytes("V")}) {
    EXPECT_EQ(BuildMeasuringPointImage(table).status, PointSectionStatus::kWithoutEntries);
  }
}

TEST(Sections, AThousandMeasuringPointsFit) {
  Bytes entries;
  for (unsigned n = 0; n < 1000; ++n) entries += PointEntry(PointNumber(n), "0001");
  const PointSection section = BuildMeasuringPointImage(OfficeTable(entries));
  EXPECT_EQ(section.status, PointSectionStatus::kBuilt);
  EXPECT_EQ(section.bytes.size(), 4U + 1000 * 18 + 4 + 1000 * 4 + 4);
  EXPECT_EQ(section.bytes.substr(4 + 999 * 18 + 16, 2), PackWord(6 + 999 * 4)) << "the last distance";

  const PointSection overflow =
      BuildMeasuringPointImage(OfficeTable(entries + PointEntry("99999999", "0001")));
  EXPECT_EQ(overflow.status, PointSectionStatus::kTooManyPoints);
  EXPECT_EQ(overflow.bytes, "");
}

}  // namespace
}  // namespace ox
