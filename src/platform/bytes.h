// The two kinds of text of the program, told apart by name.
#pragma once

#include <string>
#include <string_view>

namespace ox {

/// Characters of 8 bits as they stand on the line, in table texts, packed tables, images and program files.
/// One char is one byte, 0 to 255; the empty string means "nothing" or failure throughout.
using Bytes = std::string;
using BytesView = std::string_view;

/// The value 0 to 255 of one byte of a Bytes; plain char is signed on this host.
constexpr unsigned ByteValue(char byte) {
  return static_cast<unsigned char>(byte);
}

/// The byte of the lowest eight bits of a value.
constexpr char ByteOf(unsigned value) {
  return static_cast<char>(static_cast<unsigned char>(value & 0xFFU));
}

/// Around a value in settings, table and loader files.
constexpr char kQuote = '"';

}  // namespace ox
