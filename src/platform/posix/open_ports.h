// The descriptors of the ports that are open now: what the window system's Rest waits on beside its own
// events.
#pragma once

#include <vector>

namespace ox {

/// A port adds its descriptor when it opens and removes it when it closes or is found dead: a line that has
/// hung up is readable for ever and would keep Rest from resting.
class OpenPorts {
 public:
  void Add(int descriptor) { descriptors_.push_back(descriptor); }
  void Remove(int descriptor) { std::erase(descriptors_, descriptor); }

  const std::vector<int>& Descriptors() const { return descriptors_; }

 private:
  std::vector<int> descriptors_;
};

}  // namespace ox
