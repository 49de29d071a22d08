// A table image read back: what a device holds, in the words of the tables.
#pragma once

#include <string>
#include <vector>

#include "platform/bytes.h"

namespace ox {

// All texts are in the device's characters (device_characters.h), numbers are digits.

struct PointContent {
  Bytes number;                   ///< 8 digits
  Bytes first;                    ///< a difference: "-" or a blank and 4 digits
  Bytes second;                   ///< the same
  Bytes name;                     ///< without blanks at its end
  std::vector<Bytes> parameters;  ///< 4 digits each
};

struct OfficeContent {
  Bytes name;
  Bytes code;
  std::vector<PointContent> points;
};

struct ParameterContent {
  Bytes number;
  Bytes designation;  ///< without blanks at its end
  Bytes unit;
};

struct TableContent {
  Bytes version;
  std::vector<OfficeContent> offices;
  std::vector<ParameterContent> parameters;
};

struct ImageContent {
  bool generation3 = false;
  TableContent tables;       ///< as much as could be read
  std::size_t bodySize = 0;  ///< bytes in use
  /// What is wrong with the image, UTF-8; empty when nothing is.
  std::vector<std::string> faults;
};

/// Reads an image of either generation (layout: table_images.h), which it tells by the image's first word.
ImageContent ReadTableImage(BytesView image);

}  // namespace ox
