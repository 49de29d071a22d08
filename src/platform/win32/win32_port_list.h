// The ports of this host, looked up where the system tells about its devices.
#pragma once

#include "platform/port_list.h"

namespace ox {

/// Whether a port is there, and its adapter's name. Whether a program has taken it the system tells only by
/// refusing to open it, and opening would switch its modem lines: so a port is kPresent or kMissing.
class Win32PortList : public PortList {
 public:
  PortEntry Look(int number) override;
};

}  // namespace ox
