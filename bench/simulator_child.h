// oxsim as a child process.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace ox::bench {

/// Runs from its making to its end. Puts the device on COM1 of the working folder.
class SimulatorChild {
 public:
  /// Returns when the port is there; throws std::runtime_error when it does not come.
  explicit SimulatorChild(std::vector<std::string> options);
  SimulatorChild(const SimulatorChild&) = delete;
  SimulatorChild& operator=(const SimulatorChild&) = delete;
  ~SimulatorChild();

 private:
  pid_t child_;
};

}  // namespace ox::bench
