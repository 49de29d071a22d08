// The name under which a program finds the simulated device.
#pragma once

#include <string>

namespace ox::sim {

/// A symbolic link to a pseudo-terminal, there as long as this object is.
class PortLink {
 public:
  /// Takes the place of a link to a pseudo-terminal that an earlier run left. Throws std::system_error when
  /// the link cannot be made, or when something else has the name.
  PortLink(std::string name, std::string target);
  PortLink(const PortLink&) = delete;
  PortLink& operator=(const PortLink&) = delete;
  /// Removes the link, unless it leads elsewhere by now.
  ~PortLink();

 private:
  std::string name_;
  std::string target_;
};

}  // namespace ox::sim
