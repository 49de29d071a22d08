// A device at a port, for the time of one command.
#pragma once

#include <string_view>

#include "link/device_search.h"
#include "link/dialogue.h"
#include "tool/console.h"
#include "tool/device_options.h"
#include "tool/status_line.h"

namespace ox::tool {

class DeviceSession : private SearchObserver {
 public:
  /// Console and options outlive the session.
  DeviceSession(const Console& console, const DeviceOptions& options);

  SessionSettings& Settings() { return settings_; }
  /// Shows what the device is at.
  StatusLine& Status() { return status_; }

  /// The connection test; with --line it tries these settings alone. Whether a device was found.
  bool Search();
  /// Whether the port could not be opened in it, which was told.
  bool PortFailed() const { return portFailed_; }
  /// The same, and tells when there is none.
  bool Find();
  /// For a command that needs no identification: with --line there is nothing to be found.
  bool Reach() { return !options_.line.empty() || Find(); }

  /// Says a message in place of the status.
  void Say(std::string_view message);

 private:
  void Tell(std::string_view message) override;
  void TryPair(BytesView baud, BytesView parity) override;

  const Console& console_;
  const DeviceOptions& options_;
  SessionSettings settings_;
  StatusLine status_;
  bool portFailed_ = false;  // in the last search
};

}  // namespace ox::tool
