// Whether a program has the other side of a pseudo-terminal open.
#pragma once

#include <string>

namespace ox::sim {

/// Counts the openings of a file by everybody, from its construction on.
class Openings {
 public:
  /// Throws std::system_error when the host does not watch the file.
  explicit Openings(const std::string& path);
  Openings(const Openings&) = delete;
  Openings& operator=(const Openings&) = delete;
  ~Openings();

  /// To wait on; readable when Look has something to tell.
  int Descriptor() const { return watch_; }
  /// Takes notice of all openings and closings up to now; true when the last one that had the file open
  /// closed it meanwhile, even when somebody has opened it again.
  bool Look();
  /// Whether somebody had it open at the last look.
  bool Any() const { return open_ > 0; }

 private:
  int watch_ = -1;
  int open_ = 0;
};

}  // namespace ox::sim
