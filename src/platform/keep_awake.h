// Keeping the PC at work while a device is written.
#pragma once

namespace ox {

/// Prevents, during a run, that the PC falls asleep by itself, by its lid or its power key, or is shut down.
class KeepAwake {
 public:
  KeepAwake() = default;
  KeepAwake(const KeepAwake&) = delete;
  KeepAwake& operator=(const KeepAwake&) = delete;
  virtual ~KeepAwake() = default;

  /// Keeps the PC awake for its own life; one at a time.
  class Hold {
   public:
    explicit Hold(KeepAwake& host) : host_(host) {
      host_.held_ = true;
      host_.Take();
    }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() {
      host_.Release();
      host_.held_ = false;
    }

   private:
    KeepAwake& host_;
  };

  /// Whether a run is under way, also when the host has not agreed to stay awake.
  bool Held() const { return held_; }

 private:
  /// Asks the host; waits some tenths of a second at most. A host that cannot or will not stay awake changes
  /// nothing for the caller.
  virtual void Take() noexcept = 0;
  /// Ends the request: the host may sleep again.
  virtual void Release() noexcept = 0;

  bool held_ = false;
};

}  // namespace ox
