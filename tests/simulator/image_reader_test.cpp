// Table images of both layouts, made by hand and read back; and the same with something wrong in them.
#include "simulator/image_reader.h"

#include <gtest/gtest.h>

namespace ox::sim {
namespace {

using namespace std::string_literals;

const Bytes kOlder =
    "\x08\x80\0\0\x3E\x80\0\0Stand 1\0\0"
    "K|ln\000123\00010000002-0012 9999WT   \00000011023\xFF\0\0\0"
    "0001 Wasserst. cm\0001023 Temp.     C\0\0\0\xFF"s;
const Bytes kGeneration3 =
    "\x10\0\0\0\x18\0\0\0\x38\0\0\0\x4C\0\0\0Stand 1\0\xFF\xFF\xFF\xFF"
    "\x02\0\0\0\x01\0Wasserst.cm \x23\x10Temp.    C  \xFF\xFF\xFF\xFF"
    "\x01\0\0\0\x23\x01K|ln          \xFF\xFF\xFF\xFF"
    "\x01\0\0\0\x02\0\0\x10\x23\x01\xF4\xFF\x0F\x27WT   \xFF\x06\0"
    "\xFF\xFF\xFF\xFF\x01\0\x23\x10\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s;

/// Fills a body up and puts the checksum behind it, worked out here once more.
Bytes Image(Bytes body, unsigned sum = 2) {
  body.resize(16382, '\xFF');
  for (const char byte : body) sum += ByteValue(byte);
  return body + ByteOf(sum) + ByteOf(sum >> 8U);
}

/// Reads the image, and none whose checksum or, at one of these places, structure is another.
template <typename Reader>
void Check(Reader read, const Bytes& body, const std::vector<std::size_t>& structure) {
  const StationData data = read(Image(body)).value();
  EXPECT_EQ(data.version + data.offices.at(0).code + data.offices[0].name, "Stand 1123K|ln");
  EXPECT_EQ(data.parameters.at(0).number + data.parameters.at(1).designation, "0001Temp.    ");
  const auto& [number, office, name, first, second, parameters] = data.points.at(0);
  EXPECT_EQ(std::tuple(number + office + name, first, second), std::tuple("10000002123WT   ", -12, 9999));
  EXPECT_EQ(parameters, (std::vector<std::string>{"0001", "1023"}));
  EXPECT_FALSE(read(Image(body, 3)));
  for (const std::size_t at : structure) {
    Bytes changed = body;
    ++changed[at];
    EXPECT_FALSE(read(Image(changed))) << at;
  }
}

TEST(ImageReader, WantsItsLayoutToTheByte) {
  Check(ReadOlderImage, kOlder, {0, 4, 15, 16, 34, 49, 59, 61, 66, 76, 98, 99});
  Check(ReadGeneration3Image, kGeneration3, {0, 4, 8, 12, 23, 24, 28, 60, 68, 88, 107, 108, 114, 127});
}

}  // namespace
}  // namespace ox::sim
