// Whose turn it is: the program's, or that of the test and its host.
#pragma once

namespace ox::test {

/// Switches for its own life. A test begins on its own side; a program whose allocations are counted or fail
/// is told by it from everything around it.
class Side {
 public:
  explicit Side(bool program) : before_(programRuns_) { programRuns_ = program; }
  Side(const Side&) = delete;
  Side& operator=(const Side&) = delete;
  ~Side() { programRuns_ = before_; }

  static bool ProgramRuns() { return programRuns_; }

 private:
  static inline bool programRuns_ = false;
  bool before_;
};

struct Exposure : Side {  // from here on it is the program that runs
  Exposure() : Side(true) {}
};
struct Shelter : Side {  // from here on it is the test or its host
  Shelter() : Side(false) {}
};

}  // namespace ox::test
