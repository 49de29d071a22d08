// The whole host of a test: virtual time, scripted user, serial line in memory, files in memory.
#pragma once

#include <gtest/gtest.h>

#include "link/port_notices.h"
#include "support/memory_files.h"
#include "support/scripted_device.h"
#include "support/test_clock.h"
#include "support/test_ports.h"
#include "support/test_windows.h"
#include "ui/host.h"

namespace ox::test {

using Strings = std::vector<std::string>;

class TestRandom : public RandomNumbers {
 public:
  double Next() override {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(state_ >> 11U) * 0x1.0p-53;
  }

 private:
  unsigned long long state_ = 1;
};

struct TestKeepAwake : KeepAwake {
  int taken = 0;

 private:
  void Take() noexcept override { ++taken; }
  void Release() noexcept override {}
};

struct TestPortList : PortList {
  std::map<int, PortEntry> ports;
  PortEntry Look(int number) override { return ports[number]; }
};

struct TestHost {
  TestClock clock;
  TestPorts ports{clock};
  TestWindows windows{clock, ports};
  MemoryFiles files;
  TestRandom random;
  TestKeepAwake awake;
  TestPortList portList;
  Notices notices;
  PortsWithNotices portsWithNotices{ports, notices};
  Host host{{windows, clock, portsWithNotices, files, random, awake, portList}, windows, notices};
};

}  // namespace ox::test
