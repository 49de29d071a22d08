// The right to a port's name among all oxsims of this machine.
#pragma once

#include <string>

namespace ox::sim {

/// Held as long as this object is; the host frees it when the process dies, however that happens. Counts for
/// all users, and under every path that leads to the name.
class NameClaim {
 public:
  /// Throws std::system_error when another oxsim holds the name.
  explicit NameClaim(const std::string& name);
  NameClaim(const NameClaim&) = delete;
  NameClaim& operator=(const NameClaim&) = delete;
  ~NameClaim();

 private:
  int socket_ = -1;
};

}  // namespace ox::sim
