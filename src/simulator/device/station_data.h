// What a device knows of its measuring network, as it reads it out of the table image written into it.
#pragma once

#include <string>
#include <vector>

#include "platform/bytes.h"

namespace ox::sim {

/// One office. Both texts in device characters.
struct StationOffice {
  Bytes code;  ///< 3 characters: digits, in the older image also letters
  Bytes name;  ///< up to 14 characters, without blanks at its end
};

/// One parameter. Both texts in device characters.
struct StationParameter {
  std::string number;  ///< 4 digits
  Bytes designation;   ///< 9 characters, padded with blanks on the right
  Bytes unit;          ///< 1 to 3 characters
};

/// One measuring point with the parameters it shows.
struct StationPoint {
  std::string number;                   ///< 8 digits
  Bytes office;                         ///< the code of its office
  Bytes name;                           ///< 5 device characters, padded with blanks on the right
  int firstDifference = 0;              ///< -9999 to 9999
  int secondDifference = 0;             ///< -9999 to 9999
  std::vector<std::string> parameters;  ///< 4 digits each, in the order of the assignment; may be empty
};

/// The whole network, everything in the order of the image.
struct StationData {
  Bytes version;  ///< of the tables; 1 to 16 characters, in the generation III image at most 12
  std::vector<StationOffice> offices;
  std::vector<StationParameter> parameters;
  std::vector<StationPoint> points;
};

/// A padded text without the blanks at its end.
inline Bytes WithoutPadding(Bytes text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

}  // namespace ox::sim
