// The program oxsim as a process of its own, its line linked into the working folder.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "platform/bytes.h"

namespace ox::test {

class SimProcess {
 public:
  /// Returns when the line is there; throws std::runtime_error with the reason when it does not come.
  explicit SimProcess(std::vector<std::string> options);
  SimProcess(const SimProcess&) = delete;
  SimProcess& operator=(const SimProcess&) = delete;
  /// Ends it; its line is gone then.
  ~SimProcess();

  struct Memory {
    Bytes tables;
    Bytes program;
  };
  /// What the device holds now.
  Memory Dump() const;

  /// Has the modem send what it holds.
  void SendHeld() const;

 private:
  pid_t process_ = 0;
};

}  // namespace ox::test
