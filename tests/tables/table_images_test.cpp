// The two images of a linked table: every byte, what fits, and what cannot be written.
#include "tables/table_images.h"

#include <gtest/gtest.h>

#include "support/difference.h"
#include "tables/content_text.h"
#include "tables/image_content.h"
#include "tables/image_fill.h"
#include "tables/mes_table.h"
#include "tables/par_table.h"
#include "tables/table_rig.h"
#include "tables/table_summary.h"
#include "tables/zuo_table.h"

namespace ox {
namespace {

const Bytes kParameters = "0001 Pegelhoeh cm ___";

Bytes WholeImage(const Bytes& body, const Bytes& checksum) {
  return Packed(body) + Bytes(16382 - body.size(), '\xFF') + checksum;
}

TEST(TableImages, HoldTheTablesByteForByte) {
  const Bytes linked =
      "Version 2026 neu__Leer_045___14 Zeichen ja!_123_12345678 0012-0012Pegel_00010012^"
      "99999999-9999 9999Weh  _1023^__Amt_789_00000000-0000 0000X    _0001^___";
  const TableImages images = BuildTableImages(Packed(linked), Packed(kParameters));
  const Bytes older = WholeImage("\x08\x80__\xA0\x80__" + linked + kParameters, "\xC5\x33");
  EXPECT_EQ(test::Difference(images.older.bytes, older, test::PartsOfImage(older)), "");
  // The sections stand at 16, 28 + 4, 48 + 8 and 100 + 12. The version has but 12 characters; the parameters
  // are a multiple of four already and get four bytes of filler all the same.
  const Bytes body =
      "\x10___\x1C___\x30___\x64___Version 2026_^^^"
      "\x01___\x01_Pegelhoehcm ^^^^^^"
      "\x03___\x45_Leer          \x23\x01"
      "14 Zeichen ja!\x89\x07"
      "Amt           ^^^^"
      "\x03___\x78\x56\x34\x12\x23\x01\x0C_\xF4^Pegel^\x2A_"
      "\x99\x99\x99\x99\x23\x01\xF1\xD8\x0F\x27Weh  ^\x1E_"
      "____\x89\x07____X    ^\x10_"
      "^^^^\x01_\x12_^^\x23\x10^^\x01_^^^^^^";
  const Bytes generation3 = WholeImage(body, "\x6F\x3D");
  EXPECT_EQ(test::Difference(images.generation3.bytes, generation3, test::PartsOfImage(generation3)), "");
}

TEST(TableImages, AreReadBackAsTheFilesThatTheyCouldBeMadeOf) {
  const Bytes linked =
      "Version 2026 neu__Leer_045___]ber  _123_12345678 0012-9999Pegel_00010012^"
      "99999999-0000 9999\x7Fh   _1023^___";
  const auto [newer, older] =
      BuildTableImages(Packed(linked), Packed("0001 \x1F{        [m2_1023           m/s___"));
  const auto points = [](const std::string& version, const std::string& name, const std::string& difference) {
    return "/S/\"" + version + "\"\n/A/\"Leer\" /Z/\"045\"\n/B/ Ende\n/A/\"" + name +
           "\" /Z/\"123\"\n/N/\"12345678\" /D/\" 0012\" /M/\"-9999\" /T/\"Pegel\"\n/N/\"99999999\" /D/\"" +
           difference + "\" /M/\" 9999\" /T/\"\\7Fh\"\n/B/ Ende\n/E/\n";
  };
  for (const auto& [image, mes] : {std::pair(newer, points("Version 2026", "Über", " 0000")),
                                   {older, points("Version 2026 neu", "Über  ", "-0000")}}) {
    const ImageContent content = ReadTableImage(image.bytes);
    EXPECT_EQ(content.faults, Texts());
    EXPECT_EQ(content.bodySize, image.bodySize);
    EXPECT_EQ(PointTableText(content.tables), mes);
    EXPECT_EQ(ParameterListText(content.tables),
              "/P/\"0001\" /T/\"°ä\" /M/\"Äm2\"\n/P/\"1023\" /T/\" \" /M/\"m/s\"\n/E/\n");
    EXPECT_EQ(AssignmentTableText(content.tables),
              "/N/\"12345678\" /P/\"0001,0012\"\n/N/\"99999999\" /P/\"1023\"\n/E/\n");
  }
  // Bytes changed, and what is said of it besides the checksum.
  using Damage = std::tuple<TableImage, std::size_t, Bytes, std::string>;
  for (const auto& [image, at, bytes, told] :
       {Damage{newer, 28, Bytes("z\0", 2), "Abschnitt 1 (Tabellenstand) ist beschädigt"},
        {newer, 72, "z", "Abschnitt 3 (Ämter) ist beschädigt"},
        {newer, 16000, "z", "Prüfsumme 4A76 hex, 49F1 hex erwartet"},
        {newer, 4, "z", "Abschnitt 2 (Parameter) ist beschädigt"},
        {newer, 112 + 4, "z", "Abschnitt 4 (Messstellen) ist beschädigt"},
        {newer, 109, "z", "Abschnitt 4 (Messstellen) ist beschädigt"},
        {newer, 4, "\xF5\x3F" + Bytes(16371, '\0') + Bytes("\1\0\0\0\1", 5),
         "Abschnitt 2 (Parameter) ist beschädigt"},
        {newer, 4, "\xF4\x3F" + Bytes(16374, '\0'), "Abschnitt 3 (Ämter) ist beschädigt"},
        {older, 5, "z", "die Adresse der Parameterliste liegt nicht im Abbild"},
        {older, 4, "\x08\x80", "die Adresse der Parameterliste liegt nicht im Abbild"},
        {older, 4, "\x21\x80", "die Messstellentabelle ist beschädigt"},
        {older, older.bodySize - 6, Bytes(3, '\0'), "die Parameterliste ist beschädigt"},
        {older, 4, "\xFE\xBF", "die Adresse der Parameterliste liegt nicht im Abbild"},
        {older, 24, "z", "die Messstellentabelle ist beschädigt"}}) {
    Bytes damaged = image.bytes;
    damaged.replace(at, bytes.size(), bytes);
    const Texts faults = ReadTableImage(damaged).faults;
    ASSERT_EQ(faults.size(), told.starts_with("Prüf") ? 1U : 2U) << at << told;
    EXPECT_TRUE(faults[0].starts_with("Prüfsumme ")) << faults[0];
    EXPECT_EQ(faults.back(), told);
  }
  EXPECT_EQ(ReadTableImage(Bytes(16384, 'a')).faults,
            Texts{"beginnt mit 6161 hex, ein Abbild mit 0010 oder 8008"});
  EXPECT_EQ(ReadTableImage("").faults, Texts{"0 Bytes, ein Abbild hat 16384"});
}

TEST(TableImages, ADamagedImageIsToldOrReadAsTheTablesThatItWasMadeOf) {
  const auto [newer, older] =
      BuildTableImages(Packed("Netz 2026__Leer_045___Amt_123_12345678 0012-9999Pegel_00010012^"
                              "07654321 0000 0000Weh  _0012^__Nord_007_" +
                              Point("11111111", "1023") + "___"),
                       Packed("0001 Pegelhoeh cm _0012 Q         m3s_1023 Wind      m/s___"));
  int meaningless = 0;
  for (const TableImage& image : {newer, older}) {
    for (std::size_t at = 0; at < image.bodySize; ++at) {
      for (const char change : Bytes("\x01\x10\x80\xFF")) {
        Bytes damaged = image.bytes;
        damaged[at] ^= change;
        const auto [generation3, tables, size, faults] = ReadTableImage(damaged);
        for (const OfficeContent& office : tables.offices)
          for (const PointContent& point : office.points)
            EXPECT_TRUE(!point.name.empty() && !point.parameters.empty() && point.first.size() == 5 &&
                        point.second.size() == 5)
                << at;
        const std::string points = PointTableText(tables), list = ParameterListText(tables);
        EXPECT_EQ((points + list).find(':'), Bytes::npos) << at << ": 10 as a digit";
        if (!faults.back().starts_with("Prüf") || (points + list).find('\\') != Bytes::npos) continue;
        RecordedMessages messages;
        const auto made = BuildImagesSilently(
            ParseMesTable(TableText(points), messages), ParseParTable(TableText(list), messages),
            ParseZuoTable(TableText(AssignmentTableText(tables)), messages));
        if (!made || !messages.texts.empty()) continue;  // no table may hold this
        const TableImage& again = generation3 ? made->generation3 : made->older;
        EXPECT_EQ(again.bodySize, size) << at;
        const bool same = again.bytes.starts_with(damaged.substr(0, kChecksumOffset));
        EXPECT_TRUE(same || again.bytes == image.bytes) << at;
        meaningless += same ? 0 : 1;
      }
    }
  }
  EXPECT_EQ(meaningless, 4 * (12 + 12 + 6)) << "filler, zeros of the heads, blanks between fields";
}

TEST(TableImages, ASectionThatCannotBeWrittenMakesGeneration3Unusable) {
  const Bytes point = Point("12345678", "0001");
  using Case = std::pair<Bytes, Bytes>;
  for (const auto& [points, parameters] : {
           Case{Office(point), "0001 Pegelhoeh cm___"},
           {Office(point), "0001 Pegelhoeh cm _xx__"},
           {"V__Amt_A1B_" + point + "___", kParameters},
           {"V__Amt_1_" + point + "___", kParameters},
           {"V__Fünfzehn lang!_123_" + point + "___", kParameters},
           {"V__Amt_123_" + point, kParameters},
           {"__Amt_123_" + point + "___", kParameters},
           {Office(""), kParameters},
           {Office(point + Point("12345678")), kParameters},
           {Office(point + Point("12345678", "00010")), kParameters},
           {Office(point + "12345678 0012-0012Pegel_0001"), kParameters},
           {Office(point + "12345678+0012-0012Pegel_0001^"), kParameters},
       }) {
    const TableImages images = BuildTableImages(Packed(points), Packed(parameters));
    EXPECT_EQ(images.generation3.status, ImageStatus::kUnusable) << points << parameters;
    EXPECT_EQ(images.older.status, ImageStatus::kBuilt);
  }
  // A single character ends the list.
  EXPECT_EQ(BuildTableImages(Packed(Office(point)), Packed("0001 Pegelhoeh cm _x__")).generation3.status,
            ImageStatus::kBuilt);
}

// A linked table of so many points: one parameter each, but the last has `last` of them.
Bytes Points(unsigned count, unsigned last = 1) {
  Bytes entries;
  for (unsigned n = 1; n < count; ++n) entries += Point(std::to_string(10000000 + n), "0001");
  Bytes digits;
  while (last-- > 0) digits += "0001";
  return Packed(Office(entries + Point("99999999", digits)));
}

TEST(TableImages, HoldUpTo16380BytesAndAThousandPoints) {
  const Bytes linked = Points(1);
  const std::size_t room = 16380 - 8 - linked.size();
  const auto older = [&](std::size_t size) { return BuildTableImages(linked, Bytes(size, 'p')).older; };
  EXPECT_EQ(older(room).bytes.substr(16379, 3), "p\xFF\xFF");
  EXPECT_EQ(DescribeFill(older(room)), "16380 von 16380 Bytes (100 %)");
  EXPECT_EQ(older(room + 1).status, ImageStatus::kOverflow);
  EXPECT_EQ(DescribeFill(older(room + 1)), "zu groß: 16381 von 16380 Bytes (101 %)");

  // Head 16, version 6 + 2, parameters 20 + 4, offices 22 + 2; 740 points 12 + 740 * 22 and 7 * 2 for the
  // further parameters of the last, with 2 bytes of filler: 16380.
  const auto generation3 = [](const Bytes& points) {
    return BuildTableImages(points, Packed(kParameters)).generation3.status;
  };
  EXPECT_EQ(generation3(Points(740, 8)), ImageStatus::kBuilt);
  EXPECT_EQ(generation3(Points(740, 9)), ImageStatus::kOverflow);

  EXPECT_EQ(generation3(Points(1000, 0)), ImageStatus::kUnusable);
  EXPECT_EQ(generation3(Packed(Office(Point("12345678", Bytes(4 * 8200, '1')) + Point("2")))),
            ImageStatus::kUnusable);
  EXPECT_EQ(generation3(Points(1001, 0)), ImageStatus::kOverflow) << "it goes before an unusable section";
  EXPECT_EQ(DescribeFill(BuildTableImages(Points(1001), Packed(kParameters)).generation3),
            "mehr als 1000 Messstellen");
}

TEST(TableImages, WhatWillBeWrittenIsToldInAFewWords) {
  const Bytes two = Packed("Netz }__Leer_045___Amt_123_" + Point("12345678") + Point("87654321") + "___");
  const Bytes parameters = Packed("0001 Pegelhoeh cm _0002 Pegelhoeh cm ___");
  const Bytes both = Packed(
      "12345678"
      "00010002_"
      "87654321"
      "0001__");
  EXPECT_EQ(DescribePointTable(two), "Stand Netz ü, 2 Ämter, 2 Messstellen");
  EXPECT_EQ(DescribePointTable(Packed(Office(Point("12345678", "0001")))),
            "Stand Stand, 1 Amt, 1 Messstelle");
  EXPECT_EQ(DescribeParameterList(parameters), "2 Parameter");
  EXPECT_EQ(DescribeAssignmentTable(both), "2 Messstellen, 3 zugeordnete Parameter");
  EXPECT_EQ(DescribeAssignmentTable(Packed("123456780001__")), "1 Messstelle, 1 zugeordneter Parameter");

  const auto images = BuildImagesSilently(two, parameters, both);
  ASSERT_TRUE(images);
  // Head 8, points 80 + 12, parameters 40; head 16, version 8, parameters 36, offices 40, points 60.
  EXPECT_EQ(DescribeFill(images->older), "140 von 16380 Bytes (1 %)");
  EXPECT_EQ(DescribeFill(images->generation3), "160 von 16380 Bytes (1 %)");
  const auto without = BuildImagesSilently(two, parameters,
                                           Packed("12345678"
                                                  "00010002__"));
  ASSERT_TRUE(without);
  EXPECT_EQ(DescribeFill(without->generation3), "Tabellen nicht verwendbar");
  EXPECT_FALSE(BuildImagesSilently(two, parameters,
                                   Packed("12345678"
                                          "0009__")));
}

}  // namespace
}  // namespace ox
