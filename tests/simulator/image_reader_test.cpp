// Table images made by hand, read back; and the same images with something wrong in them.
#include "simulator/image_reader.h"

#include <gtest/gtest.h>

namespace ox::sim {
namespace {

using namespace std::string_literals;

const Bytes kOlder =
    "\x08\x80\0\0\x64\x80\0\0Stand 1\0\0"
    "K|ln\000123\00010000001-0012 0340Pegel\00000011023\37710000002 9999-9999WT   \0\xFF\0\0"
    "Bonn  \0A1B\0\0\0\0"
    "0001 Wasserst. cm \0001023 Temp.     K\0\0\0"s;
const Bytes kGeneration3 =
    "\x10\0\0\0\x10\0\0\0\x30\0\0\0\x44\0\0\0T1\0\xFF"
    "\x02\0\0\0\x01\0Wasserst.cm \x23\x10Temp.    K  \xFF\xFF\xFF\xFF"
    "\x01\0\0\0\x23\x01K|ln          \xFF\xFF\xFF\xFF"
    "\x02\0\0\0\x78\x56\x34\x12\x23\x01\xF4\xFF\x0C\0Pegel\xFF\x18\0"
    "\x02\0\0\x10\x23\x01\x0F\x27\xF1\xD8WT   \xFF\x0C\0\xFF\xFF\xFF\xFF"
    "\x01\0\x23\x10\xFF\xFF\x23\x10\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s;

std::string EverythingIn(const StationData& data) {
  std::string told = data.version + "; ";
  for (const auto& [code, name] : data.offices) told += code + " " + name + "; ";
  for (const auto& [number, name, unit] : data.parameters) told += number + " " + name + " " + unit + "; ";
  for (const auto& [number, office, name, first, second, parameters] : data.points) {
    told += number + " " + office + " " + name + " " + std::to_string(first) + " " + std::to_string(second);
    for (const auto& parameter : parameters) told += " " + parameter;
    told += "; ";
  }
  return told;
}

// Fills a body up and puts the checksum behind it, worked out here once more.
Bytes Image(Bytes body) {
  body.resize(16382, '\xFF');
  unsigned sum = 2;
  for (const char byte : body) sum += ByteValue(byte);
  return body + ByteOf(sum) + ByteOf(sum >> 8U);
}

// Reads the image, and none whose size, checksum or, where the checksum fits, structure is another.
template <typename Reader>
void Check(Reader read, const Bytes& body, const std::string& told, std::vector<std::size_t> structure) {
  const Bytes image = Image(body);
  EXPECT_EQ(EverythingIn(read(image).value()), told);
  for (const Bytes& broken : {Bytes(), image.substr(1), image + '\xFF', image.substr(0, 16382) + "xx"}) {
    EXPECT_FALSE(read(broken));
  }
  for (const std::size_t at : structure) {
    Bytes changed = body;
    changed[at] = ByteOf(ByteValue(changed[at]) ^ 1U);
    EXPECT_FALSE(read(Image(changed))) << at;
  }
}

TEST(ImageReader, WantsItsLayoutToTheByte) {
  Check(ReadOlderImage, kOlder + "\xFF",
        "Stand 1; 123 K|ln; A1B Bonn; 0001 Wasserst. cm ; 1023 Temp.     K; "
        "10000001 123 Pegel -12 340 0001 1023; 10000002 123 WT    9999 -9999; ",
        {0, 3, 4, 7, 15, 16, 21, 25, 34, 39, 49, 58, 83, 84, 85, 92, 97, 98, kOlder.size()});
  Check(ReadGeneration3Image, kGeneration3 + "\xFF",
        "T1; 123 K|ln; 0001 Wasserst. cm ; 1023 Temp.     K  ; "
        "12345678 123 Pegel -12 12 0001 1023; 10000002 123 WT    9999 -9999 1023; ",
        {0, 4, 8, 12, 15, 18, 19, 20, 22, 52, 54, 56, 60, 76, 78, 80, 88, 99, 100, kGeneration3.size()});
}

}  // namespace
}  // namespace ox::sim
