// The ports of this host, looked up where the host tells about its devices.
#pragma once

#include <utility>

#include "platform/port_list.h"
#include "platform/posix/host_folders.h"

namespace ox {

class PosixPortList : public PortList {
 public:
  explicit PosixPortList(HostFolders host = {}) : host_(std::move(host)) {}

  PortEntry Look(int number) override;

 private:
  HostFolders host_;
};

}  // namespace ox
