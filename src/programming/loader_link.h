// The exchange with the device's loader, the same for all update windows.
#pragma once

#include <memory>

#include "programming/loader_requests.h"
#include "session/session_settings.h"
#include "ui/host.h"

namespace ox {

/// An update window's line to the loader. Owns the window's port; shows nothing to the user. Every operation
/// but Close may throw PortError and leaves the port to be closed by the caller then.
class LoaderLink {
 public:
  /// Host and settings outlive the link.
  LoaderLink(Host& host, const SessionSettings& settings);

  /// Opens the port at the loader's settings, anew when it is open.
  void OpenForLoader();
  void Close() noexcept { Duep_->Close(); }

  /// Asks a device in its text dialogue for its loader and waits for the acknowledgement. Takes a closed port
  /// or an open one and leaves it open at the loader's settings. False when no acknowledgement, or another
  /// text, came, or when the port broke while it was awaited.
  bool RequestUpdateMode();

  /// Wakes the loader and sends it one frame: `data` of at most 256 bytes, `address` 0 to 65535. Returns the
  /// reply, the first piece that arrived ("A" accepted, "N" refused); empty when the loader did not wake up,
  /// when no frame is sent, or did not reply in time.
  Bytes SendBlock(const LoaderRequest& request, std::size_t address = 0, BytesView data = {});

  /// Whether the loader answers a frame with exactly "A".
  bool Accepts(const LoaderRequest& request, std::size_t address = 0, BytesView data = {}) {
    return SendBlock(request, address, data) == kAccepted;
  }

  static constexpr BytesView kAccepted = "A";
  static constexpr BytesView kRefused = "N";

 private:
  void Open(BytesView lineSettings);
  bool AwaitAcknowledgement();
  /// The first piece that the port delivers; empty when the clock passes `seconds` from now. A wait that
  /// midnight overtakes ends only with input, since the clock falls back to 0.
  Bytes WaitForReply(int seconds);

  Host& host_;
  const SessionSettings& settings_;
  std::unique_ptr<SerialPort> Duep_;
};

}  // namespace ox
