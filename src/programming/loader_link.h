// The exchange with the device's loader, the same for all updates.
#pragma once

#include <cstddef>
#include <memory>

#include "link/line_protocol.h"
#include "platform/clock.h"
#include "platform/machine.h"
#include "programming/block_frame.h"
#include "programming/loader_requests.h"
#include "session/session_settings.h"

namespace ox {

/// The speed of the line to the loader; a character of 8 bits without parity has a start and a stop bit too.
constexpr int kLoaderBaud = 19200;
constexpr int kLoaderCharacterBits = 10;

/// What the line alone needs for a request with so many data bytes: wake-up and answer, frame and answer.
constexpr Seconds LineTime(std::size_t data) {
  constexpr std::size_t kSingleCharacters = 3;  // the wake-up and both answers
  const std::size_t characters = kSingleCharacters + kFrameHeaderSize + data;
  return static_cast<Seconds>(characters * kLoaderCharacterBits) / static_cast<Seconds>(kLoaderBaud);
}

/// The line of an update to the loader. Owns its port; shows nothing to the user. Every operation
/// but Close may throw PortError and leaves the port to be closed by the caller then.
class LoaderLink {
 public:
  /// Machine and settings outlive the link.
  LoaderLink(Machine& machine, const SessionSettings& settings);

  /// Whose port and line parameters it uses.
  const SessionSettings& Session() const { return settings_; }
  /// What keeps its PC awake.
  KeepAwake& Awake() const { return machine_.awake; }

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
    return SendBlock(request, address, data) == kYes;
  }

 private:
  void Open(BytesView lineSettings);
  bool AwaitAcknowledgement();
  /// The first piece that the port delivers; empty after `seconds`.
  Bytes WaitForReply(int seconds);

  Machine& machine_;
  const SessionSettings& settings_;
  std::unique_ptr<SerialPort> Duep_;
};

}  // namespace ox
