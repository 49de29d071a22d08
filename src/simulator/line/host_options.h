// How a simulated end is put on the line of a host.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "simulator/line/endpoint.h"

namespace ox::sim {

struct HostOptions {
  std::string link = "COM1";               ///< the name of the port; relative to the working folder
  bool paced = true;                       ///< characters take their time on the line
  std::optional<std::size_t> unplugAfter;  ///< the cable is pulled once, when so many characters have passed
  Seconds latency = 0;                     ///< of a USB adapter at the PC; 0: none
};

}  // namespace ox::sim
