// The two complete images: heads, padding, limits and checksum.
#include "tables/table_images.h"

#include <gtest/gtest.h>

#include "tables/packed_samples.h"

namespace ox {
namespace {

const Bytes kParameters = Packed("0001 Pegelhoeh cm \0\0\0");

TEST(TableImages, ChecksumStartsAtTwo) {
  EXPECT_EQ(ImageChecksum(""), 2U);
  EXPECT_EQ(ImageChecksum(Bytes(kChecksumOffset, '\xFF')), 0xBE04U);
}

// The checksum worked out another way: from the back, byte by byte.
Bytes ClosingWord(const Bytes& image) {
  std::uint16_t sum = 2;
  for (std::size_t at = 16382; at-- > 0;) sum = static_cast<std::uint16_t>(sum + (image[at] & 0xFF));
  return {static_cast<char>(sum & 0xFF), static_cast<char>(sum >> 8)};
}

TEST(TableImages, OlderImage) {
  const Bytes linked = OfficeTable(PointEntry("12345678", "0001"));
  const auto size = static_cast<char>(linked.size());
  const TableImage image = BuildTableImages(linked, kParameters).older;
  ASSERT_EQ(image.status, ImageStatus::kBuilt);
  ASSERT_EQ(image.bytes.size(), 16384U);
  const Bytes body =
      Packed("\x08\x80\0\0") + static_cast<char>(size + 8) + Packed("\x80\0\0") + linked + kParameters;
  EXPECT_EQ(image.bytes.substr(0, 16382), body + Bytes(16382 - body.size(), '\xFF'));
  EXPECT_EQ(image.bytes.substr(16382), ClosingWord(image.bytes));
}

TEST(TableImages, Generation3Image) {
  // A version field of eight bytes is already a multiple of four and gets four bytes of filler all the same.
  const Bytes linked = Packed(
                           "Version\0\0Amt\0"
                           "123\0") +
                       PointEntry("12345678", "0001") + Packed("\0\0\0");
  const TableImage image = BuildTableImages(linked, kParameters).generation3;
  ASSERT_EQ(image.status, ImageStatus::kBuilt);
  ASSERT_EQ(image.bytes.size(), 16384U);
  const Bytes body = Packed(
      "\x10\0\0\0"
      "\x18\0\0\0"
      "\x2C\0\0\0"
      "\x40\0\0\0"                                          // slots: 16, 28 - 4, 52 - 8, 76 - 12
      "Version\0\xFF\xFF\xFF\xFF"                           // at 16
      "\1\0\0\0\x01\0Pegelhoehcm \xFF\xFF\xFF\xFF\xFF\xFF"  // at 28
      "\1\0\0\0\x23\x01"
      "Amt           \xFF\xFF\xFF\xFF"                                 // at 52
      "\1\0\0\0\x78\x56\x34\x12\x23\x01\x0C\0\xF4\xFFPegel\xFF\x06\0"  // at 76
      "\xFF\xFF\xFF\xFF\x01\0\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF");
  EXPECT_EQ(image.bytes.substr(0, body.size()), body);
  EXPECT_EQ(image.bytes.find_first_not_of('\xFF', body.size()), 16382U);
  EXPECT_EQ(image.bytes.substr(16382), ClosingWord(image.bytes));
}

TEST(TableImages, OlderImageHoldsUpTo16380Bytes) {
  const Bytes linked = OfficeTable(PointEntry("12345678", "0001"));
  const std::size_t room = 16380 - 8 - linked.size();
  const TableImage full = BuildTableImages(linked, Bytes(room, 'p')).older;
  ASSERT_EQ(full.status, ImageStatus::kBuilt);
  EXPECT_EQ(full.bytes.substr(16379, 3), "p\xFF\xFF");
  const TableImage overflow = BuildTableImages(linked, Bytes(room + 1, 'p')).older;
  EXPECT_EQ(overflow.status, ImageStatus::kOverflow);
  EXPECT_EQ(overflow.bytes, "");
}

// Status of the generation III image with so many points: one parameter each, but the last has `last` of
// them.
ImageStatus Generation3Status(unsigned points, std::size_t last) {
  Bytes entries;
  for (unsigned n = 1; n < points; ++n) entries += PointEntry(PointNumber(n), "0001");
  Bytes digits;
  while (last-- > 0) digits += "0001";
  return BuildTableImages(OfficeTable(entries + PointEntry("99999999", digits)), kParameters)
      .generation3.status;
}

TEST(TableImages, Generation3ImageHoldsUpTo16380Bytes) {
  // Head 16, version 6 + 2, parameters 20 + 4, offices 22 + 2; points: 12 and 22 for each with one parameter,
  // 2 for each further one. 740 points: 16292, with 7 parameters more 16306, and 2 bytes of filler make
  // 16308: 16380.
  EXPECT_EQ(Generation3Status(740, 8), ImageStatus::kBuilt);
  EXPECT_EQ(Generation3Status(740, 9), ImageStatus::kOverflow);
  EXPECT_EQ(Generation3Status(1001, 1), ImageStatus::kOverflow);
  EXPECT_EQ(Generation3Status(1001, 0), ImageStatus::kOverflow)
      << "an overflow goes before an unusable section";
  EXPECT_EQ(Generation3Status(2, 0), ImageStatus::kUnusable);
}

TEST(TableImages, AnUnusableSectionLeavesTheOlderImageAlone) {
  const Bytes good = OfficeTable(PointEntry("12345678", "0001"));
  const Bytes letters = Packed("V\0\0Amt\0A1B\0") + PointEntry("12345678", "0001") + Packed("\0\0\0");
  const std::pair<Bytes, Bytes> tables[] = {
      {OfficeTable(PointEntry("12345678")), kParameters},  // a point without parameters
      {OfficeTable(""), kParameters},                      // no points at all
      {letters, kParameters},                              // an office code of letters
      {good, Packed("0001 Pegelhoeh cm\0\0\0")},           // a short unit
  };
  for (const auto& [linked, parameters] : tables) {
    const TableImages images = BuildTableImages(linked, parameters);
    EXPECT_EQ(images.generation3.status, ImageStatus::kUnusable);
    EXPECT_EQ(images.generation3.bytes, "");
    EXPECT_EQ(images.older.status, ImageStatus::kBuilt);
  }
}

}  // namespace
}  // namespace ox
