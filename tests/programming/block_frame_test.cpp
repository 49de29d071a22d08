// The loader frame, byte by byte.
#include "programming/block_frame.h"

#include <gtest/gtest.h>

namespace ox {
namespace {

TEST(BlockFrame, HasTheHeaderTheLoaderExpects) {
  struct Case {
    char letter;
    std::size_t address;
    std::size_t length;
    BytesView header;
  };
  for (const Case& c :
       {Case{'V', 0, 0, {"V\x13\x58\0\0\0\0\x3F", 8}}, Case{'W', 0, 0, {"W\x13\x58\0\0\0\0\x3E", 8}},
        Case{'a', 0, 0, {"a\x13\x58\0\0\0\0\x34", 8}}, Case{'b', 0, 0, {"b\x13\x58\0\0\0\0\x33", 8}},
        Case{'c', 0, 0, {"c\x13\x58\0\0\0\0\x32", 8}}, Case{'0', 0, 0, {"0\x13\x58\0\0\0\0\x65", 8}},
        Case{'1', 0, 0, {"1\x13\x58\0\0\0\0\x64", 8}}, Case{'2', 0, 0, {"2\x13\x58\0\0\0\0\x63", 8}},
        Case{'L', 0, 0, {"L\x13\x58\0\0\0\0\x49", 8}}, Case{'X', 0, 0, {"X\x13\x58\0\0\0\0\x3D", 8}},
        Case{'P', 0x3F00, 256, {"P\x13\x58\0\x3F\0\0\x06", 8}},
        Case{'P', 0xFF12, 255, {"P\x13\x58\0\xFF\x12\xFF\x35", 8}}}) {
    const Bytes data(c.length, '\xFE');
    EXPECT_EQ(BuildBlockFrame(c.letter, c.address, data), Bytes(c.header) + data) << c.letter << c.address;
  }
}

}  // namespace
}  // namespace ox
