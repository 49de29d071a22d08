// Puts a simulated end on a pseudo-terminal of this host and keeps it going.
#pragma once

#include <csignal>

#include <optional>
#include <string>

#include "simulator/line/endpoint.h"
#include "simulator/line/host_options.h"
#include "simulator/line/paced_line.h"
#include "simulator/line/usb_adapter.h"
#include "simulator/pty/name_claim.h"
#include "simulator/pty/openings.h"
#include "simulator/pty/port_link.h"
#include "simulator/pty/pty_line.h"

namespace ox::sim {

/// One end on one pseudo-terminal under one name. Wakes up only when a character is due or has come. Takes
/// from the PC no more than the line carries, and holds for it no more than the host's buffer: what is not
/// read when that is full is lost, or on an unpaced line makes the end wait.
class LineHost {
 public:
  /// From the cable being pulled until it is in its place again, on a new pseudo-terminal.
  static constexpr Seconds kUnplugged = 3;

  /// Plugs the end in; throws std::system_error when that is not possible, as under a name that another oxsim
  /// has. The end must outlive the host.
  LineHost(Endpoint& end, HostOptions options);

  /// The time that the end is given: seconds since this host started.
  Seconds Now() const;

  /// What a program opens; empty while the cable is pulled.
  std::string Path() const;

  /// Does everything that is due.
  void Work();
  /// Whether nothing more will be due until something comes from the PC.
  bool Idle() const { return !NextWakeUp(); }
  /// Waits until something is due or has come from the PC, or until a signal comes that the calling thread
  /// holds back and the mask `awaited` lets through.
  void Wait(const sigset_t& awaited);

 private:
  struct Plug {
    PtyLine line;
    Openings openings;
    PortLink link;
    UsbAdapter adapter;
    bool open = false;  // the port, as far as the end knows
    explicit Plug(const HostOptions& options)
        : openings(line.Path()), link(options.link, line.Path()), adapter(options.latency) {}
  };

  void Count(std::size_t characters);
  void Unplug();
  std::optional<LineSettings> PcEnd();
  bool Held() const;
  std::optional<Seconds> NextWakeUp() const;
  void TakeFromPc();

  Endpoint& end_;
  HostOptions options_;
  NameClaim claim_;  // also while the cable is pulled
  Seconds start_ = 0;
  PacedLine paced_;
  std::optional<Plug> plug_;
  Seconds replugAt_ = 0;
  std::size_t passed_ = 0;
};

}  // namespace ox::sim
