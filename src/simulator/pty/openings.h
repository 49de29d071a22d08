// Whether a program has the other side of a pseudo-terminal open.
#pragma once

#include <string>
#include <utility>

namespace ox::sim {

/// Counts the openings of a file by everybody, from its construction on.
class Openings {
 public:
  /// Throws std::system_error when the host does not watch the file.
  explicit Openings(const std::string& path);
  Openings(const Openings&) = delete;
  Openings& operator=(const Openings&) = delete;
  ~Openings();

  /// To wait on; readable when Look has something to take notice of.
  int Descriptor() const { return watch_; }
  /// Takes notice of all that has happened up to now.
  void Look();
  /// Whether somebody has it open.
  bool Any() const { return open_ > 0; }
  /// Whether the last one that had it open has closed it since the last call, even when somebody has opened
  /// it again.
  bool TakeLeft() { return std::exchange(left_, false); }
  /// To be called when what was written has been read: whether all of it was written before the file was
  /// opened last.
  bool TakeWrittenBefore();

 private:
  int watch_ = -1;
  int open_ = 0;
  bool left_ = false;
  bool written_ = false;        // since it was opened last, and not read yet
  bool writtenBefore_ = false;  // in an opening before that, and not read yet
};

}  // namespace ox::sim
