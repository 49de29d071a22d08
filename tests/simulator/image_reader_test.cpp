// Table images made by hand, read back; and the same images with something wrong in them.
#include "simulator/image_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "simulator/table_checksum.h"

namespace ox::sim {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// Fills a body up and puts the checksum behind it, worked out here once more.
Bytes Image(Bytes body) {
  body.resize(16382, '\xFF');
  unsigned sum = 2;
  for (const char byte : body) sum += ByteValue(byte);
  return body + ByteOf(sum) + ByteOf(sum >> 8U);
}

Bytes OlderBody() {
  return "\x08\x80\0\0\x64\x80\0\0"s
         "Stand 1\0\0"s
         "K|ln\0"
         "123\0"s
         "10000001-0012 0340Pegel\0"
         "00011023\xFF"s
         "10000002 9999-9999WT   \0\xFF"s
         "\0\0"s
         "Bonn  \0"
         "A1B\0"
         "\0\0\0"s
         "0001 Wasserst. cm \0"
         "1023 Temp.     K\0"s
         "\0\0"s;
}

Bytes Generation3Body() {
  return "\x10\0\0\0\x10\0\0\0\x30\0\0\0\x44\0\0\0"s
         "T1\0\xFF"s
         "\x02\0\0\0"
         "\x01\0Wasserst.cm "
         "\x23\x10Temp.    K  "
         "\xFF\xFF\xFF\xFF"s
         "\x01\0\0\0"
         "\x23\x01K|ln          "
         "\xFF\xFF\xFF\xFF"s
         "\x02\0\0\0"s
         "\x78\x56\x34\x12\x23\x01\xF4\xFF\x0C\0Pegel\xFF\x18\0"s
         "\x02\0\0\x10\x23\x01\x0F\x27\xF1\xD8WT   \xFF\x0C\0"s
         "\xFF\xFF\xFF\xFF"
         "\x01\0\x23\x10\xFF\xFF"
         "\x23\x10\xFF\xFF"
         "\xFF\xFF\xFF\xFF"
         "\xFF\xFF"s;
}

// Everything that was read, on one line per thing.
std::string Told(const std::optional<StationData>& data) {
  if (!data) return "nothing";
  std::string text = data->version + "\n";
  for (const auto& office : data->offices) text += "office " + office.code + " " + office.name + "\n";
  for (const auto& parameter : data->parameters)
    text += parameter.number + " [" + parameter.designation + "] [" + parameter.unit + "]\n";
  for (const auto& point : data->points) {
    text += point.number + " " + point.office + " [" + point.name + "] " +
            std::to_string(point.firstDifference) + " " + std::to_string(point.secondDifference);
    for (const auto& parameter : point.parameters) text += " " + parameter;
    text += "\n";
  }
  return text;
}

TEST(ImageReader, ReadsTheOlderImage) {
  EXPECT_EQ(Told(ReadOlderImage(Image(OlderBody()))),
            "Stand 1\n"
            "office 123 K|ln\n"
            "office A1B Bonn\n"
            "0001 [Wasserst.] [cm ]\n"
            "1023 [Temp.    ] [K]\n"
            "10000001 123 [Pegel] -12 340 0001 1023\n"
            "10000002 123 [WT   ] 9999 -9999\n");
}

TEST(ImageReader, ReadsTheGeneration3Image) {
  EXPECT_EQ(Told(ReadGeneration3Image(Image(Generation3Body()))),
            "T1\n"
            "office 123 K|ln\n"
            "0001 [Wasserst.] [cm ]\n"
            "1023 [Temp.    ] [K  ]\n"
            "12345678 123 [Pegel] -12 12 0001 1023\n"
            "10000002 123 [WT   ] 9999 -9999 1023\n");
}

TEST(ImageReader, WantsItsOwnLayoutWholeAndWithItsChecksum) {
  for (const Bytes& image : {Image(OlderBody()), Image(Generation3Body())}) {
    EXPECT_NE(ReadOlderImage(image).has_value(), ReadGeneration3Image(image).has_value());
    for (const Bytes& broken :
         {Bytes(), image.substr(1), image + '\xFF', Bytes(16384, '\xFF'), Bytes(16384, '\0')}) {
      EXPECT_FALSE(ReadOlderImage(broken));
      EXPECT_FALSE(ReadGeneration3Image(broken));
    }
    for (const std::size_t at : {0U, 20U, 9000U, 16381U, 16382U, 16383U}) {
      Bytes flipped = image;
      flipped[at] = ByteOf(ByteValue(flipped[at]) ^ 0x10U);
      EXPECT_FALSE(ReadOlderImage(flipped)) << at;
      EXPECT_FALSE(ReadGeneration3Image(flipped)) << at;
    }
  }
}

using Reader = std::optional<StationData> (*)(BytesView);

struct Layout {
  const char* name;
  Reader read;
  Bytes body;
  std::vector<BytesView> free;  // in their order: values in which a changed bit gives just another value
};

// With the checksum put right again, a changed bit is noticed wherever it belongs to the structure; in a
// value it is noticed or read as another value.
TEST(ImageReader, NoticesEveryBitOfTheStructure) {
  const Layout layouts[] = {
      {"older",
       ReadOlderImage,
       OlderBody(),
       {"Stand 1", "K|ln", "123", "10000001-0012 0340Pegel", "00011023", "10000002 9999-9999WT   ", "Bonn  ",
        "A1B", "0001", "Wasserst.", "cm ", "1023", "Temp.    ", "K"}},
      {"generation III",
       ReadGeneration3Image,
       Generation3Body(),
       {"T1", "Wasserst.cm ", "Temp.    K  ", "K|ln          ", "\x78\x56\x34\x12", "\xF4\xFF\x0C\0Pegel"sv,
        "\x02\0\0\x10"sv, "\x0F\x27\xF1\xD8WT   "}}};
  for (const Layout& layout : layouts) {
    std::vector<bool> free(layout.body.size() + 8, false);
    std::size_t at = 0;
    for (const BytesView text : layout.free) {
      at = layout.body.find(text, at);
      ASSERT_NE(at, Bytes::npos) << text;
      std::fill_n(free.begin() + static_cast<std::ptrdiff_t>(at), text.size(), true);
    }
    int read = 0;
    for (at = 0; at < free.size(); ++at) {
      for (unsigned bit = 1; bit <= 0x80; bit <<= 1U) {
        Bytes body = layout.body;
        body.resize(free.size(), '\xFF');
        body[at] = ByteOf(ByteValue(body[at]) ^ bit);
        const auto data = layout.read(Image(body));
        if (!data) continue;
        EXPECT_TRUE(free[at]) << layout.name << " byte " << at << " bit " << bit << "\n" << Told(data);
        EXPECT_NE(Told(data), Told(layout.read(Image(layout.body)))) << layout.name << " byte " << at;
        ++read;
      }
    }
    EXPECT_GT(read, 100) << layout.name;
  }
}

}  // namespace
}  // namespace ox::sim
