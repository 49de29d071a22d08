// The one place where bytes (Windows-1252) and text for people (UTF-8) meet.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/bytes.h"

namespace ox {

/// Bytes from the line or from a table, as text for people. Every byte has a character: the five codes that
/// Windows-1252 leaves open become the control characters of the same number.
std::string ToText(BytesView bytes);

/// Text that a user typed, as bytes. A character outside Windows-1252 becomes "?"; so does broken UTF-8.
Bytes ToBytes(std::string_view text);

/// The content of a text file with one byte for each character. Today's editors write UTF-8: a content that
/// is valid UTF-8 with characters outside ASCII is read as such (without its byte order mark), any other is
/// Windows-1252 and taken as it is.
///
/// Of UTF-8 only the characters of Latin-1 get their byte. All others are foreign: a placeholder stands for
/// each of them, and they are kept beside the bytes. This holds for the "…" and "ƒ" of Windows-1252 too,
/// since old files have letters of the DOS code page under their codes. A letter and a combining mark that
/// follows it are one character where Latin-1 has it.
class FileText {
 public:
  /// `placeholder` is an ASCII character that the content does not hold.
  FileText(Bytes content, char placeholder);

  const Bytes& Characters() const { return characters_; }

  /// `length` of the characters from `start` on as text for people, foreign ones as the file has them.
  std::string Written(std::size_t start, std::size_t length) const;

 private:
  /// Takes a UTF-8 text apart.
  void Read(std::string_view text);

  char placeholder_;
  Bytes characters_;
  std::string foreign_;  // the foreign characters one after the other, UTF-8
};

}  // namespace ox
