// A handle of this host that is closed with its owner.
#pragma once

#include <utility>

namespace ox {

class Handle {
 public:
  /// Takes what the host's calls return: null and INVALID_HANDLE_VALUE both stand for none.
  explicit Handle(void* value = nullptr);
  Handle(Handle&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Handle() { Close(); }

  void* Get() const { return value_; }
  bool Valid() const { return value_ != nullptr; }

  void Close();

 private:
  void* value_;  // a HANDLE
};

/// An event that stays set until it is reset.
Handle NewEvent();

}  // namespace ox
