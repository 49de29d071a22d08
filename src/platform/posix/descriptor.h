// A file descriptor that is closed with its owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace ox {

class Descriptor {
 public:
  static constexpr int kNone = -1;

  explicit Descriptor(int number = kNone) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, kNone)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { Close(); }

  int Number() const { return number_; }
  bool Valid() const { return number_ != kNone; }

  /// False when the host had kept back an error until now, for example a full disk.
  bool Close() { return !Valid() || close(std::exchange(number_, kNone)) == 0; }

 private:
  int number_;
};

}  // namespace ox
